#pragma once

#include <host/fields/Flatten.h>
#include <host/streams/Recompress.h>
#include <tools/FieldValues.h>
#include <tools/Placements.h>

#include <nlohmann/json.hpp>

namespace Tools {

// What is done with one file, step by step in the order of the members.
struct BatchJob {
    nlohmann::json id; // a text or a number, given back with the result; null when there is none
    std::string in;
    FieldValues values;
    std::optional<Host::FieldSelection> flattened;
    std::string foreign; // the file whose pages are drawn; empty for none
    PagesAsked pages;    // how
    std::optional<Host::PDF::Compression> target;
    std::string out; // empty: nothing is saved
};

// Reads a job from a line of JSON; the reason when it is none. What was read before that stays in `job`.
std::optional<Host::Refusal> readJob(std::string_view line, BatchJob& job);

} // namespace Tools
