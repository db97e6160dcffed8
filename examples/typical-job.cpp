// The job that the library is made for, in one program: opens a form, fills it, puts a letterhead beneath its
// pages, saves, and opens what was saved.

#include <examples/Command.h>
#include <host/fields/Fill.h>
#include <host/pages/Background.h>
#include <values/Object.h>

namespace {

using Examples::shown;
using Host::FieldValue;

const char help[] =
    "Usage: typical-job FORM LETTERHEAD OUT\n"
    "\n"
    "Fills the form of an invoice that `files-pdf-make-invoice` wrote, puts the\n"
    "letterhead beneath all its pages, saves it as OUT, opens that again, and prints\n"
    "a line for each of the five steps.\n"
    "\n"
    "  --strict       refuse files that lose some of their meaning when saved\n"
    "  -v             print the library's log lines at the end\n"
    "\n"
    "Exit status: 0; 1 when a step is refused; 2 for wrong use and unreadable files.\n";

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

// The job in its steps. Each prints its line, or gives the reason why it can't be done.
class Job {
public:
    explicit Job(const Examples::Command& command) : _command(command) {}

    int run()
    {
        std::optional<Host::Refusal> refusal;
        for (const auto step : {&Job::open, &Job::fill, &Job::layBeneath, &Job::save, &Job::openAgain})
            if ((refusal = (this->*step)()))
                return _command.refuse(*_file, *refusal);
        return _command.finish();
    }

private:
    using Outcome = std::optional<Host::Refusal>; // none when all went well

    Outcome open()
    {
        _file = &_command.operand(0);
        auto opened = Host::open(*_file);
        if (!opened)
            return opened.refusal();
        _opened = std::move(*opened);
        auto form = Host::fieldNames(_opened.document);
        if (!form)
            return form.refusal();
        std::printf("opened       %s: %zu pages, %zu fields\n", shown(*_file).c_str(),
            _opened.document->getPages().size(), form->fields.size());
        return {};
    }

    Outcome fill()
    {
        auto filler = Host::FormFiller::create(_opened.document);
        if (!filler)
            return filler.refusal();
        for (const Entry& entry : entries)
            if (auto refusal = filler->fill(entry.field, entry.value))
                return Host::Refusal{entry.field + (": " + refusal->words), refusal->code};
        std::printf("filled       %zu fields: text, a check box, a radio button, a choice\n", std::size(entries));
        return {};
    }

    Outcome layBeneath()
    {
        _file = &_command.operand(1);
        auto letterhead = Host::open(*_file);
        if (!letterhead)
            return letterhead.refusal();
        const Outcome losses = Examples::lossesOf(letterhead->file);
        if (losses && _command.has("--strict"))
            return losses;
        if (losses)
            _command.warn(*_file, losses->words);
        _file = &_command.operand(0); // its pages are named
        auto done = Host::background(_opened.document, letterhead->document, Host::PDF::BackgroundMode::AllPages);
        if (!done)
            return done.refusal();
        std::printf("underlaid    %s beneath %zu pages\n", shown(_command.operand(1)).c_str(), done->pageCount);
        for (const std::string& warning : done->warnings)
            _command.warn(*_file, warning);
        return {};
    }

    Outcome save()
    {
        _file = &_command.operand(2);
        Host::SaveOptions options;
        options.isStrict = _command.has("--strict");
        if (!options.isStrict)
            Examples::checkLosses(_command, _opened.file, _command.operand(0));
        auto saved = Host::save(_opened, *_file, options);
        if (!saved)
            return saved.refusal();
        const bool isSynced = saved->durability == Host::Durability::Synced;
        std::printf("saved        %s: %llu bytes, compared, %s\n", shown(*_file).c_str(),
            static_cast<unsigned long long>(saved->size), isSynced ? "on the disk" : "its folder not synced");
        return {};
    }

    Outcome openAgain()
    {
        auto opened = Host::open(*_file);
        if (!opened)
            return opened.refusal();
        auto form = Host::fieldNames(opened->document);
        if (!form)
            return form.refusal();
        const std::size_t count = countFilled(*form);
        std::printf("opened again %zu pages, %zu of %zu values found\n", opened->document->getPages().size(), count,
            std::size(entries));
        return count == std::size(entries) ? Outcome() : Host::Refusal{"values are missing"};
    }

    const Examples::Command& _command;
    const std::string* _file = nullptr; // that the step works on
    Host::OpenedFile _opened;
};

} // namespace

int main(int argc, char** argv)
{
    Examples::Command command("typical-job", help, 3, {"--strict"});
    if (const auto status = command.parse(argc, argv))
        return *status;
    return Job(command).run();
}
