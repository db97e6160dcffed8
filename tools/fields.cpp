// Prints the fields of the form of a PDF file.

#include <host/fields/FormFields.h>
#include <tools/FieldValues.h>
#include <tools/Identifiers.h>
#include <tools/ImportReport.h>
#include <tools/Json.h>
#include <tools/LogKeeping.h>
#include <tools/Main.h>
#include <tools/ShownText.h>
#include <tools/Table.h>

#include <charconv>
#include <span>

namespace {

using Tools::json;

constexpr Tools::Option ownOptions[] = {
    {"--json", "", "output for programs: all that is known about each field"},
    {"--format", "json|fdf|xfdf|csv", "the values alone, as files-pdf-fill --values reads them"},
    Tools::separatorOption,
};
const Tools::Program program = {
    .name = "fields",
    .usage = "[options] FILE",
    .operandCount = 1,
    .about = "Prints a line for each field of the form of a PDF file: its name, kind and value, what it takes, and its "
             "flags, and where it is shown: the page, the left, bottom, right and top of its rectangle, and the states "
             "of a button; without a form none. Control characters are printed as \\ and three octal digits.",
    .options = {{"", ownOptions}, Tools::openOptions(), Tools::logOptions()},
    .refusedWhen = "FILE or its form is refused",
};

template <class Texts, class Show>
std::string joined(const Texts& texts, const char* separator, Show show)
{
    std::string out;
    for (const auto& text : texts)
        out += (out.empty() ? "" : separator) + show(text);
    return out;
}

template <class Texts>
std::string jsonList(const Texts& texts)
{
    return std::string("[").append(joined(texts, ", ", [](const auto& text) { return json(text); })) + "]";
}

std::string jsonValue(const std::optional<Host::FieldTexts>& value)
{
    return value ? Tools::jsonOfTexts(*value) : "null";
}

// In as few digits as give the number back.
std::string exactNumber(double number)
{
    char digits[400]; // of the smallest numbers there are
    return {digits, std::to_chars(digits, digits + sizeof digits, number, std::chars_format::fixed).ptr};
}

std::string numbers(const Host::Rectangle& rectangle, const char* separator)
{
    const double all[] = {rectangle.left, rectangle.bottom, rectangle.right, rectangle.top};
    return joined(all, separator, exactNumber);
}

std::string jsonPlace(const Host::FormWidget& widget)
{
    const auto orNull = [](bool isThere, std::uint64_t number) { return isThere ? std::to_string(number) : "null"; };
    const auto& page = widget.pageObject;
    return "{\"page\": " + orNull(widget.page != 0, widget.page)
        + ", \"id\": " + orNull(bool(page), page ? page->id() : 0)
        + ", \"generation\": " + orNull(bool(page), page ? page->generation() : 0)
        + ", \"rectangle\": " + (widget.rectangle ? "[" + numbers(*widget.rectangle, ", ") + "]" : "null")
        + ", \"states\": " + jsonList(widget.states) + "}";
}

std::string jsonField(const Host::FormField& field)
{
    constexpr const char* alignments[] = {"null", "\"left\"", "\"centred\"", "\"right\""};
    const auto option = [](const Host::FieldOption& each) {
        return "{\"export\": " + json(each.exported) + ", \"text\": " + json(each.displayed) + "}";
    };
    return "{\"path\": " + json(field.path) + ", \"kind\": " + json(Tools::identifierOf(field.kind))
        + ", \"flags\": " + jsonList(Host::flagLabels(field.kind, field.flags))
        + ", \"flagBits\": " + std::to_string(field.flags) + ", \"value\": " + jsonValue(field.value)
        + ", \"default\": " + jsonValue(field.defaultValue)
        + ", \"signed\": " + (field.isSigned ? "true" : "false")
        + ", \"options\": [" + joined(field.options, ", ", option) + "], \"states\": " + jsonList(field.states)
        + ", \"maxLength\": " + (field.maxLength ? std::to_string(*field.maxLength) : "null")
        + ", \"tooltip\": " + json(field.tooltip) + ", \"appearance\": " + json(field.defaultAppearance)
        + ", \"alignment\": " + alignments[std::size_t(field.quadding)]
        + ", \"widgets\": " + std::to_string(field.widgets.size())
        + ", \"places\": [" + joined(field.widgets, ", ", jsonPlace) + "]}";
}

void printJson(const Host::FormFields& form, const Tools::Opened& opened)
{
    std::printf("{\"fields\": [\n");
    for (std::size_t i = 0; i < form.fields.size(); ++i)
        std::printf("%s%s\n", jsonField(form.fields[i]).c_str(), i + 1 < form.fields.size() ? "," : "");
    std::printf("],\n\"passedOver\": %s,\n\"import\": %s}\n", jsonList(form.skipped).c_str(),
        Tools::importJson(opened).c_str());
}

// What can be put into the field.
std::string takes(const Host::FormField& field)
{
    const auto option = [](const Host::FieldOption& each) {
        const std::string exported = Tools::shown(each.exported);
        return each.displayed == each.exported ? exported : exported + "=" + Tools::shown(each.displayed);
    };
    if (!field.options.empty())
        return joined(field.options, " | ", option);
    if (!field.states.empty())
        return joined(field.states, " | ", [](const std::string& text) { return Tools::shown(text); });
    return field.maxLength ? "up to " + std::to_string(*field.maxLength) : "";
}

// "1: 72 700 90 718 Yes": the page, its rectangle and the states of a widget.
std::string place(const Host::FormWidget& widget)
{
    std::string text = widget.page != 0 ? std::to_string(widget.page) : "no page";
    if (widget.rectangle)
        text += ": " + numbers(*widget.rectangle, " ");
    for (const std::string& state : widget.states)
        text += " " + Tools::shown(state);
    return text;
}

// The first places where the field is shown.
std::string places(const Host::FormField& field)
{
    constexpr std::size_t most = 4;
    const std::size_t count = std::min(field.widgets.size(), most);
    const std::string shown = joined(std::span(field.widgets).first(count), " | ", place);
    const std::size_t rest = field.widgets.size() - count;
    return rest == 0 ? shown : shown + " and " + std::to_string(rest) + " more";
}

std::vector<std::string> rowOf(const Host::FormField& field)
{
    const auto show = [](const std::string& text) { return Tools::shown(text); };
    const auto plain = [](std::string_view text) { return std::string(text); };
    const std::string value = field.isSigned ? "signed" : joined(field.value.value_or(Host::FieldTexts()), " + ", show);
    return {Tools::shown(field.path), std::string(Host::kindLabel(field.kind)), value, takes(field),
        joined(Host::flagLabels(field.kind, field.flags), ", ", plain), places(field)};
}

void printTable(const Host::FormFields& form)
{
    std::vector<std::vector<std::string>> rows = {{"NAME", "KIND", "VALUE", "TAKES", "FLAGS", "WHERE"}};
    for (const Host::FormField& field : form.fields)
        rows.push_back(rowOf(field));
    Tools::printTable(rows);
}

// Why there is nothing to print, if so.
std::optional<Host::Refusal> printValues(const Host::FormFields& form, const Tools::CommandLine& line)
{
    const auto format = Tools::formatCalled(line.argument("--format"));
    const auto text = Tools::writeValues(form, *format, Tools::separatorOf(line));
    if (!text)
        return text.refusal();
    std::fwrite(text->data(), 1, text->size(), stdout);
    return {};
}

int fields(const Tools::CommandLine& line, const Tools::Console& console)
{
    if (const std::string conflict = line.conflictAmong({"--json", "--format"}); !conflict.empty())
        return console.misuse(conflict);
    const std::string& file = line.operand(0);
    const auto opened = Tools::Opening(line, console).open(file);
    if (!opened)
        return console.refuse(file, opened.refusal());
    const Host::Result<Host::FormFields> form = Host::listFields(opened->document, opened->limitFactor);
    if (!form)
        return console.refuse(file, form.refusal());
    if (line.has("--format")) {
        if (const auto refusal = printValues(*form, line))
            return console.refuse(file, *refusal);
    } else if (line.has("--json")) {
        printJson(*form, *opened);
    } else {
        printTable(*form);
    }
    for (const std::string& what : form->skipped)
        console.warn(file, what);
    return console.finish();
}

} // namespace

int main(int argc, char** argv)
{
    return Tools::run(program, argc, argv, fields);
}
