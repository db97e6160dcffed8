#pragma once

#include <import/Qpdf.h>

#include <cstdint>
#include <vector>

namespace Import {

// The objects that a document of libqpdf has, and where they are. libqpdf gives its own list as a copy that takes as
// much memory as small objects do.
class ObjectTable {
public:
    struct Entry {
        int id;
        int generation;
        bool isInStream;
        std::int64_t place; // the stream's id, or the offset in the file

        bool operator<(const Entry& other) const noexcept
        {
            return id < other.id || (id == other.id && generation < other.generation);
        }
    };

    explicit ObjectTable(QPDF& document);

    // By ascending ids, and generations.
    const std::vector<Entry>& entries() const noexcept { return _entries; }
    // Null when there is no such object.
    const Entry* find(int id, int generation) const noexcept;

private:
    std::vector<Entry> _entries;
};

} // namespace Import
