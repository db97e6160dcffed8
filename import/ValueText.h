#pragma once

#include <import/Qpdf.h>
#include <import/Report.h>
#include <import/Spelling.h>

#include <string_view>

namespace Import {

// Where a value is: the way to it from its object. Steps live on the stack of who takes them.
struct Step {
    const Step* before = nullptr; // none for an object, of which this is the id, and for the trailer, which has 0
    std::size_t number = 0;       // the place in an array
    std::string_view key = {};    // in a dictionary, with its solidus; empty in an array
};

// Counts one more thing at a place, and names it if it is one of the first.
void note(Places& places, const Step& step);

// What refers to objects has to be told of them.
class References {
public:
    // Whether there may be anything where it leads.
    virtual bool isFollowed(QPDFObjGen object) = 0;

protected:
    ~References() = default;
};

// Spells values of libqpdf as text for the core.
class ValueText {
public:
    using Entries = std::map<std::string, QPDFObjectHandle>;

    // Appends to the text. What has to be spelled otherwise than it was goes into the report. All must outlive this.
    ValueText(std::string& text, References& references, Report& report) noexcept;

    // The value; a reference as one, and as null when it isn't followed.
    void add(const QPDFObjectHandle& value, const Step& step, Place place);
    // The value itself, also where it is that of an object. A stream is its dictionary.
    void addDirect(QPDFObjectHandle value, const Step& step, Place place);
    // Whether it is a name without a character, which nothing can be written for. If so it is noted.
    bool isEmptyName(const std::string& name, const Step& step);
    // The entries of a dictionary, each with a blank before it.
    void addEntries(const Entries& entries, const Step& step, Place place);

private:
    std::string& _text;
    References& _references;
    Report& _report;
};

} // namespace Import
