#include <import/ValueText.h>

#include <import/Limits.h>

namespace Import {

namespace {

constexpr std::string_view emptyName = "/";

// "object 12, /Kids 3"
std::string nameOf(const Step& step)
{
    if (!step.before)
        return step.number == 0 ? "the trailer" : "object " + std::to_string(step.number);
    std::string name = nameOf(*step.before) + (step.before->before ? " " : ", ");
    if (step.key.empty())
        name += std::to_string(step.number);
    else
        spellName(name, step.key.substr(1));
    return name;
}

} // namespace

void note(Places& places, const Step& step)
{
    if (places.count++ < Limits::maxPlaces)
        places.names.push_back(nameOf(step));
}

ValueText::ValueText(std::string& text, References& references, Report& report) noexcept
    : _text(text), _references(references), _report(report)
{
}

void ValueText::add(const QPDFObjectHandle& value, const Step& step, Place place)
{
    QPDFObjectHandle handle = value;
    if (!handle.isIndirect())
        return addDirect(std::move(handle), step, place);
    const QPDFObjGen object = handle.getObjGen();
    if (_references.isFollowed(object))
        _text += std::to_string(object.getObj()) + ' ' + std::to_string(object.getGen()) + " R";
    else
        _text += "null";
}

void ValueText::addDirect(QPDFObjectHandle value, const Step& step, Place place)
{
    switch (value.getTypeCode()) {
    case ::ot_boolean: _text += value.getBoolValue() ? "true" : "false"; break;
    case ::ot_integer: _text += std::to_string(value.getIntValue()); break;
    case ::ot_real:
        if (spellReal(_text, value.getRealValue()) == Spelled::Rounded)
            note(_report.rounded, step);
        break;
    case ::ot_string: spellString(_text, value.getStringValue(), place); break;
    case ::ot_name:
        if (const std::string name = value.getName(); isEmptyName(name, step))
            _text += "null";
        else
            spellName(_text, std::string_view(name).substr(1));
        break;
    case ::ot_array: {
        _text += '[';
        std::size_t index = 0;
        for (const QPDFObjectHandle& element : value.getArrayAsVector()) {
            _text += ' ';
            add(element, {&step, index++}, place);
        }
        _text += " ]";
        break;
    }
    case ::ot_dictionary:
        _text += "<<";
        addEntries(value.getDictAsMap(), step, place);
        _text += " >>";
        break;
    default: _text += "null";
    }
}

bool ValueText::isEmptyName(const std::string& name, const Step& step)
{
    if (name != emptyName)
        return false;
    note(_report.emptyNames, step);
    return true;
}

void ValueText::addEntries(const Entries& entries, const Step& step, Place place)
{
    for (const auto& [key, value] : entries) {
        const Step next{&step, 0, key};
        if (isEmptyName(key, next))
            continue;
        _text += ' ';
        spellName(_text, std::string_view(key).substr(1));
        _text += ' ';
        add(value, next, place);
    }
}

} // namespace Import
