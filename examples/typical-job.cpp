// The job that the library is made for, in one program: opens a form, fills it, puts a letterhead beneath its
// pages, saves, and opens what was saved.

#include <host/fields/Fill.h>
#include <host/fields/FormFields.h>
#include <host/pages/Place.h>
#include <host/saving/Save.h>
#include <values/Object.h>

#include <algorithm>
#include <cstdio>

namespace {

using Host::FieldValue;

struct Entry {
    const char* field;
    FieldValue value;
};

// A text, unless it says otherwise: the radio buttons take the name of a state, the choice an option.
const Entry entries[] = {
    {"billTo", "Harbour School\nMs. Ellen Marsh\n4 Quay Street\nMillbrook MB1 2AB"},
    {"number", "2024-0117"},
    {"date", "17 May 2024"},
    {"order", "HS-2024/31"},
    {"description1", "Reading table, oak, 180 x 90 cm"},
    {"quantity1", "4"},
    {"price1", "640.00"},
    {"amount1", "2,560.00"},
    {"description2", "Bookshelf, beech, six boards"},
    {"quantity2", "7"},
    {"price2", "285.00"},
    {"amount2", "1,995.00"},
    {"description3", "Delivery and fitting"},
    {"quantity3", "1"},
    {"price3", "180.00"},
    {"amount3", "180.00"},
    {"net", "4,735.00"},
    {"tax", "899.65"},
    {"total", "5,634.65"},
    {"terms", "within 30 days"},
    {"delivery", "Courier"},
    {"partial", true},
    {"remarks", "Two of the seven bookshelves follow in June; they are paid for with this invoice.\n"
                "Thank you for your order."},
    {"deliverTo", "Harbour School, Library\n2 Quay Street\nMillbrook MB1 2AB"},
    {"parcels", "4 tables, in two parts each\n5 bookshelves\n1 box of fittings"},
};

const char* textOf(const FieldValue& value)
{
    const auto* text = std::get_if<std::string>(&value);
    return text ? text->c_str() : "Yes";
}

// How many of the fields hold what was put into them.
std::size_t countFilled(const Host::FormFields& form)
{
    std::size_t count = 0;
    for (const Entry& entry : entries)
        count += std::any_of(form.fields.begin(), form.fields.end(), [&entry](const Host::FormField& field) {
            return field.path == entry.field && field.value == Host::FieldTexts{textOf(entry.value)};
        });
    return count;
}

using Step = std::optional<Host::Refusal>; // none when all went well

// The job in its steps. Each prints its line, or gives the reason why it can't be done.
class Job {
public:
    Job(const char* form, const char* letterhead, const char* out) : _form(form), _letterhead(letterhead), _out(out) {}

    int run()
    {
        for (const auto step : {&Job::open, &Job::fill, &Job::addLetterhead, &Job::save, &Job::openAgain})
            if (const Step refusal = (this->*step)()) {
                std::fprintf(stderr, "%s: %s\n", _file, refusal->message.c_str());
                return 1;
            }
        return 0;
    }

private:
    Step open()
    {
        _file = _form;
        auto opened = Host::open(_form);
        if (!opened)
            return opened.refusal();
        _opened = std::move(*opened);
        auto form = Host::listFields(_opened.document);
        if (!form)
            return form.refusal();
        std::printf("opened       %s: %zu pages, %zu fields\n", _form, _opened.document->getPages().size(),
            form->fields.size());
        return {};
    }

    Step fill()
    {
        auto filler = Host::FormFiller::create(_opened.document);
        if (!filler)
            return filler.refusal();
        for (const Entry& entry : entries)
            if (auto refusal = filler->fill(entry.field, entry.value))
                return refusal->withPrefix(entry.field + std::string(": "));
        std::printf("filled       %zu fields: text, a check box, a radio button, a choice\n", std::size(entries));
        return {};
    }

    Step addLetterhead()
    {
        _file = _letterhead;
        auto letterhead = Host::open(_letterhead);
        if (!letterhead)
            return letterhead.refusal();
        _file = _form; // its pages are named
        auto done = Host::place(_opened.document, letterhead->document);
        if (!done)
            return done.refusal();
        std::printf("letterhead   %s beneath %zu pages\n", _letterhead, done->pageCount);
        for (const std::string& warning : done->warnings)
            std::fprintf(stderr, "%s: warning: %s\n", _file, warning.c_str());
        return {};
    }

    Step save()
    {
        _file = _out;
        auto saved = Host::save(_opened, _out);
        if (!saved)
            return saved.refusal();
        const bool isSynced = saved->durability == Host::Durability::Synced;
        std::printf("saved        %s: %llu bytes, compared, %s\n", _out,
            static_cast<unsigned long long>(saved->size), isSynced ? "on the disk" : "its folder not synced");
        return {};
    }

    Step openAgain()
    {
        auto opened = Host::open(_out);
        if (!opened)
            return opened.refusal();
        auto form = Host::listFields(opened->document);
        if (!form)
            return form.refusal();
        const std::size_t count = countFilled(*form);
        std::printf("opened again %zu pages, %zu of %zu values found\n", opened->document->getPages().size(), count,
            std::size(entries));
        return count == std::size(entries) ? Step() : Host::Refusal{Host::Reason::Missing, "values are missing"};
    }

    const char* const _form;
    const char* const _letterhead;
    const char* const _out;
    const char* _file = nullptr; // that the step works on
    Host::OpenedFile _opened;
};

} // namespace

int main(int argc, char** argv)
{
    if (argc == 4)
        return Job(argv[1], argv[2], argv[3]).run();
    std::fputs("Usage: typical-job FORM LETTERHEAD OUT\n", stderr);
    return 2;
}
