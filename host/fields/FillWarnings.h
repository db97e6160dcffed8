#pragma once

#include <host/fields/FieldTree.h>

#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace Host {

// What people should know before a filled form goes out, a line each, and no line twice.
class FillWarnings {
public:
    static constexpr std::size_t mostNamed = 10; // of the fields that share a line
    // "a, b and 3 more": the first of so many.
    static std::string listed(const std::vector<std::string>& first, std::size_t count) noexcept;

    // What a save of this document ends: signatures and usage rights.
    FillWarnings(const PDF::Document& document, const FieldTree& tree) noexcept;

    // Up to `Limits::maxSkipped` of them.
    void add(std::vector<std::string> lines) noexcept;
    // The one line about what viewers are asked, in place of an earlier one; nothing for an empty one.
    void setViewers(std::string line) noexcept;
    // Scripts that would run if a person filled the field. The fields that have some of their own share one line.
    void addScripts(const PDF::Document& document, const PDF::Dictionary& form, const FieldNode& field) noexcept;

    const std::vector<std::string>& lines() const noexcept { return _lines; }

private:
    void put(std::optional<std::size_t>& place, std::string line) noexcept;

    std::vector<std::string> _lines;
    std::unordered_set<std::string> _scripted; // paths of fields with scripts of their own
    std::vector<std::string> _firstScripted;
    std::optional<std::size_t> _scriptLine, _viewersLine; // places of the lines that change
};

} // namespace Host
