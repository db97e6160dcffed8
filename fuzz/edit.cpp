#include "Input.h"
#include "RoundTrip.h"
#include "StreamEdits.h"
#include "Walk.h"

#include <document/Document.h>
#include <document/Inspection.h>
#include <forms/Button.h>
#include <forms/Choice.h>
#include <forms/Text.h>
#include <host/fields/Fill.h>
#include <host/fields/Flatten.h>
#include <host/fields/FormFields.h>
#include <host/pages/Background.h>
#include <host/pages/Place.h>
#include <values/ArrayObj.h>

#include <algorithm>

// The target `edit`: the first byte of the input is a number of operations, of four bytes each; behind them stand a
// file, and the file of which pages are put beneath its own. Without a second one that is the first once more.

namespace Fuzz {

namespace {

// The entry Contents of a page as a list: the elements of an array, the one value that is none, or nothing.
std::vector<Ref<PDF::Value>> contentsOf(const PDF::Object& page)
{
    const Ref<PDF::Dictionary> dictionary = page.valueAsDictionary();
    const Ref<PDF::Value> value = dictionary ? dictionary->find(::String::create("Contents")) : nullptr;
    const Ref<PDF::Array> array = PDF::valueAs<PDF::Array>(value);
    std::vector<Ref<PDF::Value>> contents;
    for (std::uint64_t i = 0; array && i < array->size(); ++i)
        contents.push_back(array->get(i));
    if (value && !array)
        contents.push_back(value);
    return contents;
}

// The bytes of an operation behind its number.
struct Arguments {
    std::uint8_t which;
    std::uint8_t amount;
    std::uint8_t variant;
};

// An element that the argument chooses; null of none.
template <class T>
T chosen(const std::vector<T>& elements, std::uint8_t which)
{
    return elements.empty() ? T() : elements[which % elements.size()];
}

class Editing {
public:
    Editing(std::string_view file, std::string_view foreignFile) noexcept
        : _file(file), _foreignFile(foreignFile), _document(openFile(file)), _foreign(openFile(foreignFile))
    {
    }

    bool isOpen() const noexcept { return bool(_document); }
    void edit(std::uint8_t operation, Arguments arguments) noexcept;
    void finish() noexcept;

private:
    void setValue(Arguments arguments) noexcept;
    void fill(Arguments arguments) noexcept;
    void replace(Arguments arguments, Tests::Fault fault) noexcept;
    bool canHaveBackground(const Ref<PDF::Document>& foreign, std::string_view file) noexcept;
    void addBackground(const Ref<PDF::Document>& foreign, std::string_view file, Arguments arguments) noexcept;
    void checkContents(
        const PDF::Object& page, const std::vector<Ref<PDF::Value>>& own, const PDF::Object& foreignPage) noexcept;
    void addCheckedBackground(Arguments arguments) noexcept;
    void place(Arguments arguments) noexcept;
    void flatten(Arguments arguments) noexcept;
    void writeToFailing(Arguments arguments) noexcept;
    void decode(Arguments arguments) noexcept;

    const std::string_view _file;
    const std::string_view _foreignFile;
    Ref<PDF::Document> _document;
    const Ref<PDF::Document> _foreign;
    Allowance _allowance;
};

void Editing::edit(std::uint8_t operation, Arguments arguments) noexcept
{
    constexpr std::uint8_t firstOfPlace = 224, firstOfFlatten = 192;
    if (operation >= firstOfPlace)
        return place(arguments);
    if (operation >= firstOfFlatten)
        return flatten(arguments);
    switch (operation % 16) {
    case 0: return setValue(arguments);
    case 1: return fill(arguments);
    case 2: return replace(arguments, {});
    case 3: return replace(arguments, {.read = arguments.amount % 3u});
    case 4:
        if (_foreign)
            recompress(_foreign, _foreignFile, PDF::Compression::None, Way::Library, _allowance);
        return;
    case 5: return recompress(_document, _file, PDF::Compression::Flate, Way::Host, _allowance);
    case 6: return recompress(_document, _file, PDF::Compression::None, Way::Host, _allowance);
    case 7: return recompress(_document, _file, PDF::Compression::Flate, Way::Library, _allowance);
    case 8: return recompress(_document, _file, PDF::Compression::None, Way::Library, _allowance);
    case 9: return cacheStreams(_document, _file, _allowance);
    case 10: case 11: return addBackground(_foreign, _foreignFile, arguments);
    case 12: return addBackground(_document, _file, arguments);
    case 13: return addCheckedBackground(arguments);
    case 14: return writeToFailing(arguments);
    default: return decode(arguments);
    }
}

// Sets the value of a field through the library.
void Editing::setValue(Arguments arguments) noexcept
{
    const Ref<PDF::Field> field = chosen(fieldsOf(_document), arguments.which);
    const std::string text(arguments.amount % 20, static_cast<char>('A' + arguments.variant % 64));
    const Ref<PDF::String> string = PDF::String::create(::String::create(text.c_str()));
    bool isSet = false;
    if (const auto box = field.cast<PDF::Fields::Text>()) {
        isSet = ask("setValue", {ErrInvalidArgument}, [&] { return box->setValue(string); });
        require(!isSet || box->value() == string, "a text field has the value that was set");
    } else if (const auto choice = field.cast<PDF::Fields::Choice>()) {
        const std::vector<Ref<PDF::Value>> strings(arguments.variant % 4, string);
        const Ref<PDF::Value> value = strings.empty() ? Ref<PDF::Value>(string) : PDF::Array::create(strings);
        isSet = ask("setValue", {ErrInvalidArgument}, [&] { return choice->setValue(value); });
    } else if (const auto button = field.cast<PDF::Fields::Button>()) {
        const Ref<PDF::Name> state = chosen(button->states(), arguments.which);
        isSet = ask("setValue", {ErrPushButton}, [&] { return button->setValue(state); })
            && ask("setAppearanceState", {}, [&] { return button->setAppearanceState(state); });
    }
    require(!isSet || _document->changed(), "a value that was set is a change");
}

// Sets the value of a field as people do.
void Editing::fill(Arguments arguments) noexcept
{
    const auto names = Host::listFields(_document);
    if (!names || names->fields.empty())
        return;
    const Host::FormField field = chosen(names->fields, arguments.which);
    const std::string text(arguments.amount % 20, static_cast<char>('A' + arguments.variant % 64));
    Host::FieldValue value = text;
    if (arguments.variant % 4 == 1)
        value = arguments.amount % 2 == 0;
    else if (arguments.variant % 4 == 2 && !field.options.empty())
        value = std::vector<std::string>(arguments.amount % 3, chosen(field.options, arguments.amount).exported);
    else if (arguments.variant % 4 == 3 && !field.states.empty())
        value = chosen(field.states, arguments.amount);
    if (const auto filled = Host::fill(_document, field.path, value); !filled)
        require(!filled.refusal().message.empty(), "a refusal has words");
    else
        require(_document->changed(), "a value that was filled in is a change");
}

void Editing::replace(Arguments arguments, Tests::Fault fault) noexcept
{
    const Ref<PDF::StreamObj> stream = chosen(streamsOf(_document), arguments.which);
    std::string data;
    for (std::size_t i = 0; i < arguments.amount * 300u; ++i)
        data += static_cast<char>(arguments.variant * i >> 3);
    if (stream && _allowance.hasElements(data.size()))
        replaceData(_document, stream, data, arguments.variant % 5, arguments.variant % 2 == 0, fault);
}

bool Editing::canHaveBackground(const Ref<PDF::Document>& foreign, std::string_view file) noexcept
{
    if (!foreign)
        return false;
    const BackgroundCost cost = costOfBackground(_document, foreign, file);
    return _allowance.hasElements(cost.elements) && _allowance.hasClones(cost.clones);
}

void Editing::addBackground(const Ref<PDF::Document>& foreign, std::string_view file, Arguments arguments) noexcept
{
    constexpr unsigned modes = 5; // an unknown one among them
    if (!canHaveBackground(foreign, file))
        return;
    const std::size_t objectsBefore = PDF::objectsOf(_document).size();
    const bool wasChanged = _document->changed();
    const auto pages = _document->getPages();
    const auto own = pages.empty() ? std::vector<Ref<PDF::Value>>() : contentsOf(*pages[0]);
    constexpr std::uint32_t foreignPagesCode = ErrBadPages + 0x100;
    const bool isAdded = ask("addBackground",
        {foreignPagesCode, ErrForeignPage, ErrForeignContent, ErrForeignStreamData, ErrForeignStreamAdd, ErrBadPages,
            ErrBadContents, ErrNoResource},
        [&] { return _document->addBackground(foreign, PDF::BackgroundMode(arguments.which % modes)); });
    require(PDF::objectsOf(_document).size() >= objectsBefore, "no object goes");
    require(_document->changed() || !wasChanged, "a background doesn't take a change back");
    if (!isAdded || pages.empty())
        return;
    require(_document->changed(), "a background is a change");
    const bool isListedAgain = std::find(pages.begin() + 1, pages.end(), pages[0]) != pages.end();
    if (!isListedAgain && foreign != _document && arguments.which % modes != 4)
        checkContents(*pages[0], own, *foreign->getPages()[0]);
}

// The content of a page is copies of that of the foreign one, and then its own from before.
void Editing::checkContents(
    const PDF::Object& page, const std::vector<Ref<PDF::Value>>& own, const PDF::Object& foreignPage) noexcept
{
    const std::vector<Ref<PDF::Value>> contents = contentsOf(page);
    const std::vector<Ref<PDF::Value>> foreignContents = contentsOf(foreignPage);
    require(contents.size() == foreignContents.size() + own.size()
            && std::equal(own.begin(), own.end(), contents.end() - own.size()),
        "the content of a page ends with its own from before");
    const auto data = [](const Ref<PDF::Document>& document, const Ref<PDF::Value>& reference) {
        const Ref<PDF::Object> object = document->object(PDF::valueAs<PDF::ObjectRef>(reference));
        return Tests::bytesOf(document->streamData(object->valueAsStream(), false));
    };
    for (std::size_t i = 0; i < foreignContents.size(); ++i)
        require(data(_document, contents[i]) == data(_foreign, foreignContents[i]),
            "the content of a page begins with that of the foreign one");
}

void Editing::addCheckedBackground(Arguments arguments) noexcept
{
    if (!canHaveBackground(_foreign, _foreignFile))
        return;
    const Host::BackgroundOptions options{arguments.variant % 2 == 0};
    const auto laid = Host::mergeBackground(_document, _foreign, PDF::BackgroundMode(arguments.which % 4), options);
    require(laid || !laid.refusal().message.empty(), "a refusal has words");
}

// Draws pages, also of the document itself. A refusal changes nothing.
void Editing::place(Arguments arguments) noexcept
{
    constexpr const char* ranges[] = {"", "1", "odd", "last-1", "r2,1", "all", "2-3even", "x"};
    const Ref<PDF::Document>& foreign = arguments.which % 8 == 0 ? _document : _foreign;
    if (!foreign || !_allowance.hasElements(16 * (PDF::fileSizeOf(foreign) + PDF::fileSizeOf(_document))))
        return;
    Host::Placement placement;
    placement.pages = ranges[arguments.which / 8 % 8];
    placement.from = ranges[arguments.amount % 8];
    placement.pairing = Host::Pairing(arguments.amount / 8 % 5);
    placement.layer = Host::Layer(arguments.variant % 2);
    placement.hasAnnotations = arguments.variant / 2 % 2 == 0;
    placement.fit = Host::Fit(arguments.variant / 4 % 3);
    placement.box = Host::PageBox(arguments.variant % 5);
    placement.anchor = Host::Anchor(arguments.variant % 9);
    placement.rotation = arguments.variant / 64 * 90;
    const std::size_t objectsBefore = PDF::objectsOf(_document).size();
    const bool wasChanged = _document->changed();
    const auto pagesBefore = Host::pages(_document);
    const auto placed = Host::place(_document, foreign, placement);
    const std::size_t objects = PDF::objectsOf(_document).size();
    if (!placed || placed->pageCount == 0) {
        require(placed || !placed.refusal().message.empty(), "a refusal has words");
        require(objects == objectsBefore && _document->changed() == wasChanged, "a refusal changes nothing");
        return;
    }
    require(_document->changed() && objects > objectsBefore, "a page that is drawn on is a change");
    const auto pages = Host::pages(_document);
    // A kid that led nowhere may name an object that was added.
    require(pages && (pages->pages.size() == pagesBefore->pages.size() || !pagesBefore->problems.empty()),
        "no page goes or comes");
}

// Makes all fields a part of their pages, or the one that is chosen. A refusal changes nothing.
void Editing::flatten(Arguments arguments) noexcept
{
    const auto fields = Host::listFields(_document);
    if (!fields || !_allowance.hasElements(16 * PDF::fileSizeOf(_document)))
        return;
    Host::FieldSelection which = Host::AllFields();
    if (arguments.which % 2 == 1)
        which = std::vector<std::string>{chosen(fields->fields, arguments.amount).path};
    const Host::FlattenOptions options{.medium = Host::Medium(arguments.variant % 2), .isAnyTextAllowed = true};
    const std::size_t objectsBefore = PDF::objectsOf(_document).size();
    const bool wasChanged = _document->changed();
    const auto done = Host::flatten(_document, which, options);
    if (!done) {
        require(!done.refusal().message.empty(), "a refusal has words");
        require(PDF::objectsOf(_document).size() == objectsBefore && _document->changed() == wasChanged,
            "a refusal changes nothing");
        return;
    }
    const auto again = Host::flatten(_document, Host::AllFields(), options);
    const auto none = Host::flatten(_document, Host::AllFields(), options);
    require(!again || (none && none->fieldCount == 0 && none->widgetCount == 0), "all that is flattened has gone");
}

void Editing::writeToFailing(Arguments arguments) noexcept
{
    if (!_allowance.hasElements(elementsToWrite(_document, _file)))
        return;
    Tests::Fault fault;
    fault.write = arguments.which;
    const Ref<Tests::TestStripe> out = make<Tests::TestStripe>("", fault);
    const bool isWritten = ask("write", {ErrWriteVersion, ErrWriteObject, ErrWriteTrailer},
        [&] { return _document->write(out); });
    require(!isWritten || !out->hasFailed, "a failing write fails the save");
}

// The data of a stream stays readable without the document, also where it stands in the file.
void Editing::decode(Arguments arguments) noexcept
{
    const Ref<PDF::StreamObj> stream = chosen(streamsOf(_document), arguments.which);
    const auto stored = stream ? storedIn(_file, _document, stream) : std::nullopt;
    if (!stored || stream->strmData())
        return;
    const Inflated inflation = inflated(isFlate(stream) ? *stored : std::string_view(), Allowance::mostElements);
    if (!_allowance.hasElements(stored->size() + inflation.bytes.size()))
        return;
    Ref<PDF::Document> document = openFile(_file);
    for (const Ref<PDF::StreamObj>& other : streamsOf(document))
        if (other->strmOfs() == stream->strmOfs()) {
            const Ref<Interfaces::Stripe> data = document->streamData(other, arguments.variant % 2 == 0);
            document = nullptr;
            require(!data || Tests::bytesOf(data).size() == data->size(), "stream data outlives its document");
            return;
        }
}

void Editing::finish() noexcept
{
    visitValues(_document, [](const Ref<PDF::Value>& value) { require(bool(value), "no part of a value is null"); });
    for (const Ref<PDF::Object>& object : PDF::objectsOf(_document))
        require(_document->object(make<PDF::ObjectRefObj>(object->id(), object->generation())) == object,
            "an object is found by its numbers");
    checkRoundTrip(std::move(_document), _file, _allowance);
}

} // namespace

} // namespace Fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    Fuzz::Input input(bytes, size);
    constexpr std::size_t mostOperations = 16;
    const std::size_t count = input.byte() % (mostOperations + 1);
    Fuzz::Input operations(bytes + (size != 0), std::min(4 * count, size - (size != 0)));
    input.text(4 * count);
    const std::string_view files = input.rest();
    const std::size_t end = std::min(files.size(), files.find("%%EOF"));
    const std::size_t second = files.find("%PDF-", end);
    Fuzz::Editing editing(files.substr(0, second), second == files.npos ? files : files.substr(second));
    if (!editing.isOpen())
        return 0;
    while (!operations.isAtEnd()) {
        const std::uint8_t operation = operations.byte();
        const std::uint8_t which = operations.byte();
        const std::uint8_t amount = operations.byte();
        editing.edit(operation, {which, amount, operations.byte()});
    }
    editing.finish();
    return 0;
}
