#pragma once

namespace Host::Decoders {

// What an encoder did before compressing, to be taken back.
struct Predictor {
    int kind = 1;            // 1 for none, 2 for TIFF's differences, 10 to 15 for PNG's rows
    int colors = 1;          // of a pixel
    int bitsPerComponent = 8;
    int columns = 1;         // pixels of a row

    bool isNone() const { return kind <= 1; }
    // Whether it can be: numbers that the format allows, and a row that a size can count.
    bool isUsable() const
    {
        constexpr int maxColors = 256;
        const int width = bitsPerComponent;
        const bool isWidth = width == 1 || width == 2 || width == 4 || width == 8 || width == 16;
        const bool isKind = kind <= 2 || (kind >= 10 && kind <= 15);
        return isKind && isWidth && colors >= 1 && colors <= maxColors && columns >= 1;
    }
};

} // namespace Host::Decoders
