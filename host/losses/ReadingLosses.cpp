#include <host/losses/ReadingLosses.h>

namespace Host {

namespace {

using namespace Libraries::Files::PDF;

enum class Effect { None, Lossy, Partial };

struct Row {
    Effect effect;
    const char* label;
};
constexpr Row rows[] = {
    {Effect::Lossy, "words glued to a bracket"},
    {Effect::Lossy, "text before a dictionary"},
    {Effect::Lossy, "values found too early"},
    {Effect::Lossy, "references as objects"},
    {Effect::Lossy, "second values of objects"},
    {Effect::Lossy, "streams after a comment"},
    {Effect::Lossy, "repeated keys"},
    {Effect::None, "ends of strings"}, // the source is kept, and so all that the format has in it
    {Effect::Lossy, "strings that end too early"},
    {Effect::Lossy, "beginnings of stream data"},
    {Effect::Lossy, "ends of stream data"},
    {Effect::Lossy, "odd references"},
    {Effect::Lossy, "control characters"},
    {Effect::Lossy, "other characters in hexadecimal strings"},
    {Effect::Partial, "objects of a second subsection"},
    {Effect::Partial, "objects of another table"},
};
static_assert(std::size(rows) == readingNoteCount);

} // namespace

bool isPartial(const ReadingNotes& notes) noexcept
{
    for (std::size_t i = 0; i < readingNoteCount; ++i)
        if (rows[i].effect == Effect::Partial && notes.of(ReadingNote(i)).count != 0)
            return true;
    return false;
}

std::string lossesOfReading(const ReadingNotes& notes) noexcept
{
    std::string text;
    for (std::size_t i = 0; i < readingNoteCount; ++i) {
        const ReadingNotes::Entry& entry = notes.of(ReadingNote(i));
        if (rows[i].effect != Effect::Lossy || entry.count == 0)
            continue;
        text += (text.empty() ? "" : ", ") + std::string(rows[i].label) + " (" + std::to_string(entry.count)
            + (entry.id != 0 ? ", object " + std::to_string(entry.id) : ", the trailer") + ")";
    }
    return text;
}

} // namespace Host
