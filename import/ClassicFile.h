#pragma once

#include <import/Image.h>
#include <import/ObjectTable.h>
#include <import/Source.h>
#include <import/ValueText.h>

#include <functional>

namespace Import {

// Objects that are nothing but a reference, and where it leads.
using Replacements = std::map<QPDFObjGen, QPDFObjGen>;

// What becomes of libqpdf's objects when they are written.
enum class Objects {
    LetGo, // so few are in memory at a time; libqpdf has null in their place
    Kept,
};

// Thrown when an object is needed once more after it was let go of. Deliberately no `std::exception`, as `Stop`.
struct ObjectIsGone {};

// Writes a document of libqpdf as a classic file that the core opens. Objects keep ids and generations.
class ClassicFile final : private References {
public:
    // All must outlive this. What is wrong with data, and libqpdf passes over, is appended to `faults`.
    ClassicFile(QPDF& document, Objects objects, Source& source, Image& image, Report& report,
        std::vector<std::string>& faults);

    // Writes the objects of the table, the table and the trailer. `whenRead` is called after libqpdf has read an
    // object, and may add to the replacements. Throws `Stop` when it can't be done in proportion, and `ObjectIsGone`.
    void write(
        const ObjectTable& table, const Replacements& replacements, const std::function<void()>& whenRead);

private:
    // A row of the table, and what becomes of the object.
    struct Row {
        enum State : std::uint8_t {
            Free,       // there is no such object
            Kept,       // it is written
            Referenced, // and something refers to it
            SetAside,   // it isn't, unless something refers to it
        };

        std::uint64_t offset = 0;
        std::uint16_t generation = 0;
        State state = Free;
        bool isGone = false; // libqpdf has null in its place
    };

    // References
    bool isFollowed(QPDFObjGen object) override;

    void readTable(const ObjectTable& table);
    bool isSetAside(QPDFObjectHandle value) const;
    void writeHeader();
    QPDFObjectHandle objectOf(
        int id, const Replacements& replacements, const std::function<void()>& whenRead);
    bool isGone(QPDFObjGen object) const;
    void requireAll(QPDFObjectHandle value) const;
    void letGo(int id, QPDFObjectHandle value);
    void writeObject(int id, QPDFObjectHandle value);
    void writeStream(QPDFObjectHandle stream, const Step& step);
    void writeData(QPDFObjectHandle stream, std::uint64_t length, std::uint64_t lengthOffset, const Step& step);
    bool isStoredAt(qpdf_offset_t offset, std::uint64_t length);
    void writeTable();
    void writeTrailer(std::uint64_t table);

    QPDF& _document;
    const Objects _objects;
    Source& _source;
    Image& _image;
    Report& _report;
    std::vector<std::string>& _faults;
    ValueText _values;
    const bool _isEncrypted;
    const QPDFObjGen _encryption; // the object that tells how, if it is one
    std::vector<Row> _rows;   // by id
    std::vector<int> _wanted; // objects that are to be written after all
    Replacements _ends;       // where references that were followed end, through all others
};

} // namespace Import
