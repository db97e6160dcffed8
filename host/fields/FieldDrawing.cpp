#include <host/fields/FieldDrawing.h>

#include <forms/Field.h>
#include <forms/FormKeys.h>
#include <host/base/ErrorWords.h>
#include <host/base/Utf8.h>
#include <host/fields/FieldReading.h>
#include <host/fields/TextString.h>
#include <host/fonts/FontValues.h>
#include <platform/ConstantText.h>
#include <platform/Limits.h>
#include <values/Exact.h>

#include <algorithm>

namespace Host {

namespace {

using PDF::Field;

constinit const ConstantText fontKey{"Font"};
constexpr std::size_t mostNamed = 10; // characters that can't be drawn

std::u32string charactersOf(const std::string& text)
{
    std::u32string characters;
    if (const Ref<::String> held = fromUtf8(text))
        held->forEach([&characters](char32_t c) { characters += c; });
    return characters;
}

// As it is drawn: control characters are blanks, but line breaks where there are several lines.
std::u32string drawnText(const std::string& text, bool isMultiline)
{
    std::u32string drawn;
    char32_t before = 0;
    for (const char32_t c : charactersOf(text)) {
        const bool isBreak = c == '\r' || c == '\n' || c == 0x2028 || c == 0x2029;
        if (isBreak && !(c == '\n' && before == '\r'))
            drawn += isMultiline ? U'\n' : U' ';
        else if (!isBreak)
            drawn += c < ' ' || (c >= 0x7F && c < 0xA0) ? U' ' : c;
        before = c;
    }
    return drawn;
}

std::string namesOf(const std::u32string& characters)
{
    std::string names;
    for (std::size_t i = 0; i < characters.size() && i < mostNamed; ++i) {
        char number[16];
        std::snprintf(number, sizeof number, "U+%04X", static_cast<unsigned>(characters[i]));
        names += (i == 0 ? "\"" : ", \"") + toUtf8(characters.substr(i, 1)) + "\" (" + number + ")";
    }
    return names + (characters.size() > mostNamed ? " ..." : "");
}

TextStyle::Align alignOf(const PDF::Document& document, const FieldNode& field, const PDF::Dictionary& widget)
{
    Ref<PDF::Value> entry = resolvePresent(document, widget.find(PDF::FormKeys::quadding));
    if (!entry)
        entry = field.entries[Inherited::Quadding];
    const std::int32_t align = countOf(document, entry).value_or(0);
    return align == 1 ? TextStyle::Align::Center : align == 2 ? TextStyle::Align::Right : TextStyle::Align::Left;
}

TextStyle styleOf(const FieldNode& field, TextStyle::Align align, double size)
{
    const std::uint32_t flags = flagsOf(field.entries);
    const std::int64_t most = maxLengthOf(field.entries).value_or(0);
    if (kindOf(field.entries) != FieldKind::Text)
        return {TextStyle::Kind::OneLine, align, 0, size};
    if (flags & Field::Multiline)
        return {TextStyle::Kind::Multiline, align, 0, size};
    const bool isComb = (flags & Field::Comb) && !(flags & Field::Password) && most > 0 && most <= Limits::maxCells;
    return {isComb ? TextStyle::Kind::Comb : TextStyle::Kind::OneLine, align, most, size};
}

// The name as dictionaries have it.
Ref<::String> keyOf(const std::string& name)
{
    const Ref<PDF::Name> key = PDF::valueAs<PDF::Name>(newName(name));
    return key ? key->value() : nullptr;
}

bool isRound(const PDF::Document& document, const PDF::Dictionary& widget, FieldKind kind)
{
    const auto marks = valueAt<PDF::Dictionary>(document, widget, "MK");
    const std::string mark = marks ? textAt(document, *marks, "CA") : "";
    return kind == FieldKind::RadioButtons && (mark.empty() || mark == "l");
}

} // namespace

FieldDrawer::FieldDrawer(Ref<PDF::Document> document, Ref<PDF::Dictionary> form) noexcept
    : _document(document), _form(std::move(form)), _embedded(std::move(document))
{
}

Result<FieldDrawing> FieldDrawer::draw(
    const FieldNode& field, const FieldUpdate& update, const Options& options, Budget& budget) noexcept
{
    if (_failure)
        return *_failure;
    const FieldKind kind = kindOf(field.entries);
    const bool isButton = kind == FieldKind::CheckBox || kind == FieldKind::RadioButtons;
    std::uint64_t textSize = update.text.size();
    for (const FieldUpdate::Choice& choice : update.choices)
        textSize += sizeof choice + choice.text.size();
    FieldDrawing drawing;
    for (std::size_t i = 0; i < field.widgets.size(); ++i) {
        if (isButton && (i >= update.drawnStates.size() || update.drawnStates[i].empty()))
            continue;
        const Ref<PDF::Dictionary>& widget = field.widgets[i];
        const std::optional<WidgetLook> look = WidgetLook::read(*_document, *widget);
        if (!look) {
            if (widget->find(::String::create("Rect")))
                drawing.warnings.push_back(field.path + " is not drawn: it has no rectangle that can be used");
            continue;
        }
        drawing.widgets.push_back({widget, *look, {}, {}, isButton ? update.drawnStates[i] : "", {}});
        if (isButton)
            drawButton(field, drawing.widgets.back());
        else if (!budget.spend(Cost::Texts, textSize))
            return budget.refusal();
        else if (auto refusal = drawText(field, update, options, drawing, budget))
            return *refusal;
    }
    std::vector<TextEngine::Glyph> glyphs;
    for (const WidgetDrawing& widget : drawing.widgets)
        glyphs.insert(glyphs.end(), widget.fonts.glyphs.begin(), widget.fonts.glyphs.end());
    using Programs = EmbeddedFonts::Programs;
    if (!glyphs.empty())
        if (auto refusal = _embedded.prepare(
                *_engine, _texts, glyphs, options.areFontsLater ? Programs::Later : Programs::AtOnce))
            return *refusal;
    return drawing;
}

std::optional<Refusal> FieldDrawer::drawText(
    const FieldNode& field, const FieldUpdate& update, const Options& options, FieldDrawing& result,
    Budget& budget) noexcept
{
    WidgetDrawing& drawing = result.widgets.back();
    const FieldKind kind = kindOf(field.entries);
    const std::uint32_t flags = flagsOf(field.entries);
    const DefaultAppearance defaults = appearanceOf(field, *drawing.widget);
    const TextStyle style = styleOf(field, alignOf(*_document, field, *drawing.widget), defaults.size);
    std::u32string text = drawnText(update.text, style.kind == TextStyle::Kind::Multiline);
    if (kind == FieldKind::Text && (flags & Field::Password))
        text.assign(text.size(), U'*');
    std::vector<ShownChoice> choices;
    for (const FieldUpdate::Choice& choice : update.choices) {
        choices.push_back({drawnText(choice.text, false), choice.isChosen});
        text += choices.back().text;
    }
    auto lettering = letteringFor(*drawing.widget, defaults.font, text, options, result.warnings, budget);
    if (!lettering)
        return lettering.refusal();
    const WidgetLook& look = drawing.look;
    const std::pair<bool, const char*> replaced[] = {
        {_last.isReplaced && !text.empty(), ": its font (DA) can't be used, and a standard one is"},
        {defaults.hasOddSize, ": its text size (DA) can't be used, and the one that fits is"},
        {look.hasOddRotation, ": its rotation (MK) is no multiple of 90 degrees, and is left out"}};
    for (const auto& [isReplaced, words] : replaced)
        if (isReplaced)
            result.warnings.push_back(field.path + words);
    ContentText& content = drawing.content;
    look.draw(content);
    const double inset = look.inset();
    content.add("/Tx BMC").add("q");
    content.add({inset, inset, look.width - 2 * inset, look.height - 2 * inset}, "re").add("W").add("n");
    if (kind == FieldKind::ListBox) {
        scroll(field, countOfChoices(style, look, **lettering), choices, result.changes);
        showChoices(choices, style, defaults.color, look, **lettering, content, drawing.fonts);
    } else if (!text.empty()) {
        showText(text, style, defaults.color, look, **lettering, content, drawing.fonts);
    }
    content.add("Q").add("EMC");
    return {};
}

// Leaves the choices that have room: from the first on, unless the first chosen one would not be seen, or the field
// says where it begins, which then is that one.
void FieldDrawer::scroll(
    const FieldNode& field, std::size_t room, std::vector<ShownChoice>& choices, Changes& changes) noexcept
{
    const Ref<::String> topIndex = ::String::create("TI");
    const auto chosen = std::find_if(
        choices.begin(), choices.end(), [](const auto& choice) { return choice.isChosen; });
    const auto first = static_cast<std::size_t>(chosen - choices.begin());
    const bool saysTop = bool(field.dictionary->find(topIndex));
    if (chosen != choices.end() && (saysTop || first >= room)) {
        choices.erase(choices.begin(), chosen);
        if (!saysTop)
            changes.push_back({field.dictionary, topIndex, newNumber(double(first))});
    }
    choices.resize(std::min(choices.size(), room));
}

void FieldDrawer::drawButton(const FieldNode& field, WidgetDrawing& drawing) noexcept
{
    const FieldKind kind = kindOf(field.entries);
    const WidgetLook& look = drawing.look;
    const bool hasRoundBorder = isRound(*_document, *drawing.widget, kind);
    for (ContentText* content : {&drawing.content, &drawing.off})
        hasRoundBorder ? look.drawRound(*content) : look.draw(*content);
    const auto marks = valueAt<PDF::Dictionary>(*_document, *drawing.widget, "MK");
    std::string mark = marks ? textOfBytes(textAt(*_document, *marks, "CA")) : "";
    if (mark.empty())
        mark = kind == FieldKind::RadioButtons ? "l" : "4";
    const StandardFont& font = *StandardFont::find("ZapfDingbats");
    const CodeNames names = Host::namesOf(font.encoding());
    const auto box = font.box(names[static_cast<unsigned char>(mark[0])]);
    const DefaultAppearance defaults = appearanceOf(field, *drawing.widget);
    const double inset = 2 * look.inset();
    const GlyphBox around = box.value_or(GlyphBox{0, 0, 800, 700});
    const double room = std::min(look.width, look.height) - 2 * inset;
    const double fitting = room * 1000 / std::max(around.right - around.left, around.top - around.bottom);
    const double size = std::max(defaults.size != 0 ? defaults.size : fitting, 1.0);
    drawing.content.add("q").add("BT").add(defaults.color);
    drawing.content.add(drawing.fonts.add(&font, "ZaDb") + " " + ContentText::number(size) + " Tf");
    drawing.content.add({(look.width - (around.left + around.right) * size / 1000) / 2,
                            (look.height - (around.bottom + around.top) * size / 1000) / 2},
        "Td");
    drawing.content.add(ContentText::literal(mark.substr(0, 1)) + " Tj").add("ET").add("Q");
}

// ---- Fonts

DefaultAppearance FieldDrawer::appearanceOf(const FieldNode& field, const PDF::Dictionary& widget) noexcept
{
    const auto bytesOf = [](const Ref<PDF::String>& string) {
        const auto bytes = string ? PDF::exactBytes(*string) : std::nullopt;
        return bytes ? std::string(bytes->begin(), bytes->end()) : std::string();
    };
    const Ref<PDF::Value> own = resolvePresent(*_document, widget.find(PDF::FormKeys::defaultAppearance));
    const Ref<PDF::Value> entry = own ? own : field.entries[Inherited::DefaultAppearance];
    // Some writers make a name of it.
    const std::string name = nameOf(*_document, entry);
    std::string bytes = name.empty() ? bytesOf(PDF::valueAs<PDF::String>(entry)) : "/" + name;
    if (bytes != _last.bytes) {
        _last.appearance = DefaultAppearance::read(bytes);
        _last.bytes = std::move(bytes);
    }
    return _last.appearance;
}

// The font that the field names, and the standard one that looks like it.
std::shared_ptr<const PlainLettering> FieldDrawer::plainLettering(
    const PDF::Dictionary& widget, const std::string& name, Budget& budget) noexcept
{
    std::vector<PlainLettering::Font> fonts;
    const Ref<PDF::Value> entry = findFont(widget, name);
    if (_last.lettering && _last.font == entry && _last.fontName == name)
        return _last.lettering;
    const StandardFont* standard = StandardFont::find(name);
    if (const TextFont* font = fontOf(entry, budget)) {
        fonts.push_back({font, entry, name});
        standard = &font->substitute();
    }
    _last.isReplaced = fonts.empty() && (entry || !standard);
    if (!standard)
        standard = StandardFont::find("Helvetica");
    fonts.push_back({&standardFont(*standard), standard, ""});
    if (standard->encoding() != BaseEncoding::Standard) {
        const StandardFont* letters = StandardFont::find("Helvetica");
        fonts.push_back({&standardFont(*letters), letters, ""});
    }
    _last.font = entry;
    _last.fontName = name;
    _last.fontKey = keyOf(name);
    return _last.lettering = std::make_shared<PlainLettering>(std::move(fonts));
}

Result<std::shared_ptr<const Lettering>> FieldDrawer::letteringFor(const PDF::Dictionary& widget,
    const std::string& font, std::u32string_view text, const Options& options, std::vector<std::string>& warnings,
    Budget& budget) noexcept
{
    std::shared_ptr<const Lettering> result = plainLettering(widget, font, budget);
    if (budget.isExceeded())
        return budget.refusal();
    const PlainLettering& plain = *_last.lettering;
    std::u32string missing;
    for (const char32_t c : text)
        if (c != '\n' && missing.find(c) == missing.npos && missing.size() <= mostNamed && !plain.has(c))
            missing += c;
    if (missing.empty())
        return result;
    std::string why;
    if (!_engine && options.engine) {
        auto engine = options.engine();
        if (engine)
            _engine = std::move(*engine);
        else
            why = "; " + engine.refusal().message;
    }
    if (_engine) {
        std::u32string wanted(text);
        std::erase_if(wanted, [](char32_t c) { return c == '\n' || isInvisible(c); });
        missing = _engine->missing(wanted);
        if (missing.empty())
            return std::shared_ptr<const Lettering>(std::make_shared<ShapedLettering>(*_engine, _texts));
    }
    const std::string names = namesOf(missing) + why;
    if (!options.isAnyTextAllowed)
        return Refusal{Reason::Unsupported, "no font has the characters " + names};
    warnings.push_back("characters that no font has are not drawn: " + names);
    return result;
}

// In the resources of the widget and of the appearance that it has, of the form, and of the page.
Ref<PDF::Value> FieldDrawer::findFont(const PDF::Dictionary& widget, const std::string& name) const noexcept
{
    if (name.empty())
        return nullptr;
    const Ref<::String> key = _last.fontName == name ? _last.fontKey : keyOf(name);
    const auto look = [&](const Ref<PDF::Dictionary>& resources) -> Ref<PDF::Value> {
        const auto fonts = resources ? PDF::resolveEntryAs<PDF::Dictionary>(*_document, *resources, fontKey) : nullptr;
        const Ref<PDF::Value> entry = fonts ? fonts->find(key) : nullptr;
        return entry && PDF::resolveAs<PDF::Dictionary>(*_document, entry) ? entry : nullptr;
    };
    const auto looks = PDF::resolveEntryAs<PDF::Dictionary>(*_document, widget, PDF::FormKeys::appearance);
    const auto stream = looks ? PDF::resolveEntryAs<PDF::Stream>(*_document, *looks, PDF::FormKeys::normalAppearance)
                              : nullptr;
    if (stream && stream->dict())
        if (Ref<PDF::Value> found = look(valueAt<PDF::Dictionary>(*_document, *stream->dict(), "Resources")))
            return found;
    for (const PDF::Dictionary* holder : {&widget, static_cast<const PDF::Dictionary*>(_form.get())})
        if (Ref<PDF::Value> found = look(
                PDF::resolveEntryAs<PDF::Dictionary>(*_document, *holder, PDF::FormKeys::defaultResources)))
            return found;
    Ref<PDF::Dictionary> page = valueAt<PDF::Dictionary>(*_document, widget, "P");
    for (std::size_t level = 0; page && level < Limits::maxFieldLevels; ++level) {
        if (Ref<PDF::Value> found = look(valueAt<PDF::Dictionary>(*_document, *page, "Resources")))
            return found;
        page = valueAt<PDF::Dictionary>(*_document, *page, "Parent");
    }
    return nullptr;
}

// Null for none, and for one that can't be used.
const TextFont* FieldDrawer::fontOf(const Ref<PDF::Value>& entry, Budget& budget) noexcept
{
    const Ref<PDF::Dictionary> dictionary = entry ? PDF::resolveAs<PDF::Dictionary>(*_document, entry) : nullptr;
    if (!dictionary)
        return nullptr;
    const auto [place, isNew] = _fonts.try_emplace(dictionary.get());
    if (isNew) {
        place->second.dictionary = dictionary;
        if (Result<TextFont> font = TextFont::read(_document, *dictionary, budget))
            place->second.font = std::move(*font);
    }
    return place->second.font ? &*place->second.font : nullptr;
}

const TextFont& FieldDrawer::standardFont(const StandardFont& font) noexcept
{
    const auto found = _standardFonts.find(&font);
    return found != _standardFonts.end() ? found->second
                                         : _standardFonts.emplace(&font, TextFont::standard(font)).first->second;
}

// ---- What becomes of them in the document

std::optional<Refusal> FieldDrawer::commit(FieldDrawing& drawing, Edit& edit) noexcept
{
    if (!_embedded.commit(edit.objects))
        return _failure = codeRefusal(Error::get(), "a font can't be embedded: ");
    for (Change& change : drawing.changes)
        edit.set(change.dictionary, change.key, std::move(change.value));
    for (WidgetDrawing& widget : drawing.widgets) {
        widget.shown = formOf(widget, widget.content, edit.objects);
        if (!widget.shown)
            return _failure = codeRefusal(Error::get(), "an appearance can't be made: ");
        Ref<PDF::Value> look = widget.shown;
        if (!widget.state.empty()) {
            widget.shownOff = formOf(widget, widget.off, edit.objects);
            look = newDictionary({{"Off", widget.shownOff}, {widget.state.c_str(), look}});
        }
        edit.set(widget.widget, PDF::FormKeys::appearance, newDictionary({{"N", look}}));
    }
    return {};
}

std::optional<Refusal> FieldDrawer::finish(Edit& edit) noexcept
{
    if (!_engine)
        return {};
    if (auto refusal = _embedded.preparePrograms(*_engine))
        return refusal;
    return _embedded.commit(edit.objects)
        ? std::nullopt
        : std::optional(codeRefusal(Error::get(), "a font can't be embedded: "));
}

// Shared by all looks with the same fonts.
Ref<PDF::Value> FieldDrawer::resourcesOf(const AppearanceFonts& fonts, PDF::NewObjects& objects) noexcept
{
    ResourceFonts key;
    for (const AppearanceFonts::Entry& entry : fonts.entries())
        key.emplace_back(entry.name, sourceValue(entry.source, objects));
    Ref<PDF::Value>& resources = _resources[key];
    if (resources)
        return resources;
    const Ref<PDF::Dictionary> list = PDF::Dictionary::create();
    for (const auto& [name, font] : key)
        list->set(keyOf(name), font);
    const Ref<PDF::Dictionary> dictionary = PDF::Dictionary::create();
    if (!fonts.entries().empty())
        dictionary->set(fontKey, list);
    return resources = objects.add(dictionary);
}

// A form XObject of its own.
Ref<PDF::Value> FieldDrawer::formOf(
    const WidgetDrawing& drawing, const ContentText& content, PDF::NewObjects& objects) noexcept
{
    const Ref<PDF::Dictionary> entries = newDictionary({{"Type", newName("XObject")}, {"Subtype", newName("Form")},
        {"BBox", newNumbers({0, 0, drawing.look.width, drawing.look.height})},
        {"Resources", resourcesOf(drawing.fonts, objects)}});
    if (drawing.look.rotation != 0)
        entries->set(::String::create("Matrix"), newNumbers(drawing.look.matrix()));
    const Ref<PDF::Stream> stream = newStream(_document, entries, content.text());
    return stream ? Ref<PDF::Value>(objects.add(stream)) : nullptr;
}

Ref<PDF::Value> FieldDrawer::sourceValue(const FontSource& source, PDF::NewObjects& objects) noexcept
{
    if (const auto* value = std::get_if<Ref<PDF::Value>>(&source))
        return *value;
    if (const auto* number = std::get_if<std::uint32_t>(&source))
        return _embedded.find(*number);
    const StandardFont* font = std::get<const StandardFont*>(source);
    Ref<PDF::Value>& value = _standardValues[font];
    if (!value)
        value = objects.add(font->dictionary());
    return value;
}

} // namespace Host
