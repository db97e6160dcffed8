#pragma once

#include <host/fields/FieldTree.h>

#include <array>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Host {

// What people should know before a filled form goes out, a line each, and no line twice.
class FillWarnings {
public:
    // "a, b and 3 more": the fields at these places.
    static std::string listed(const FieldTree& tree, const std::set<std::size_t>& fields) noexcept;

    // What a save of this document ends: signatures and usage rights.
    FillWarnings(const PDF::Document& document, const FieldTree& tree) noexcept;

    // Up to `Limits::maxSkipped` of them.
    void add(std::vector<std::string> lines) noexcept;
    // Lines that change while fields are filled, one of each kind; none while it is empty.
    enum class Changing { Viewers, Required, Scripts, Count };
    void set(Changing kind, std::string line) noexcept;
    // Scripts that would run if a person filled the field at this place of the tree.
    void addScripts(const PDF::Document& document, const FieldTree& tree, std::size_t field) noexcept;

    const std::vector<std::string>& lines() const noexcept { return _lines; }

private:
    std::vector<std::string> _lines;
    std::array<std::optional<std::size_t>, std::size_t(Changing::Count)> _places; // among the lines
    std::set<std::size_t> _scripted; // fields with scripts of their own
};

} // namespace Host
