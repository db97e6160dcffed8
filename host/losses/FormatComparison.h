#pragma once

#include <host/losses/FormatReader.h>
#include <host/losses/Losses.h>

#include <utility>

namespace Host {

// Compares what is in a file with what would be written for it, and lists what would mean something
// else: the smallest parts that differ.
class FormatComparison {
public:
    // All must outlive the comparison. A difference is listed as a copy of `lossTemplate`, with kind, place and texts.
    FormatComparison(
        const SourceText& file, const SourceText& written, const Loss& lossTemplate, Losses& losses) noexcept
        : _file(file), _written(written), _template(lossTemplate), _losses(losses)
    {
    }

    void compare(const FormatValue& meant, const FormatValue& written) noexcept;
    // Lists the two as a loss of that kind.
    void add(LossKind kind, const FormatValue& meant, const FormatValue& written) noexcept;

private:
    // The entries of a dictionary in the order of their keys, equal ones in that of the text.
    using Entries = std::vector<std::pair<std::string_view, const FormatValue*>>;
    static Entries entriesOf(const FormatValue& dictionary) noexcept;
    Entries takeRepeated(const Entries& entries) noexcept;
    void compareArrays(const FormatValue& meant, const FormatValue& written) noexcept;
    void compareDictionaries(const FormatValue& meant, const FormatValue& written) noexcept;

    const SourceText& _file;
    const SourceText& _written;
    const Loss& _template;
    Losses& _losses;
};

} // namespace Host
