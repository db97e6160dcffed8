#pragma once

#include <bench/Program.h>

// What the program of each library has to be able to do. Each library defines the operations its own way,
// with the calls and settings that make it fastest; the command line stands once.
namespace Bench {

enum class StreamForm {
    Stored,    // as they are
    Plain,     // decoded
    Flate,     // the plain ones compressed
    FlateAnew, // all decoded and compressed
};

// The operations. Each opens the document of `job.bytes` and drops it in the end; those that save, save
// to `job.out`.
void openAndTouch(Job& job); // prints the tally of all values
void walk(Job& job);         // the same several times while the document is open, by `measureWalk`
void openAndSave(Job& job, StreamForm form);
void decode(Job& job);        // one stream after the other, as `DecodedData`
void addBackground(Job& job); // the first page of `job.foreign` under all pages; then saves
void placePage(Job& job);     // the same as one XObject, where the library has that, or else by hand
void fillForm(Job& job);      // each field gets `valueOfField`; then saves
void drawForm(Job& job);      // the same with looks, where the library has that

// What the form's field of this number gets.
std::string valueOfField(std::size_t group, std::size_t field);

// What a walk over all values of all objects came across: the same for the same file in each library.
struct Tally {
    std::uint64_t values = 0;     // of every kind, references included; a stream and its dictionary are one
    std::uint64_t textLength = 0; // of keys, names and strings
    std::uint64_t fractions = 0;  // numbers with a point
    std::uint64_t integerSum = 0; // of the others
    std::uint64_t booleans = 0;   // those that are true
    std::uint64_t idSum = 0;      // of the objects referred to

    void print() const;
};

// Walks several times and prints what the fastest walk took for each value.
template <class Walk>
void measureWalk(Walk walk)
{
    constexpr int rounds = 5;
    Tally tally;
    double best = 0;
    for (int round = 0; round < rounds; ++round) {
        const double start = processorTime();
        tally = walk();
        const double time = processorTime() - start;
        best = round == 0 || time < best ? time : best;
    }
    tally.print();
    print("ns_per_value", best / static_cast<double>(tally.values));
}

} // namespace Bench
