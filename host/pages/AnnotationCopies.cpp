#include <host/pages/AnnotationCopies.h>

#include <document/Inspection.h>
#include <host/base/ErrorWords.h>
#include <host/base/Following.h>
#include <host/base/Utf8.h>
#include <host/pages/PageKeys.h>
#include <platform/Limits.h>
#include <values/Array.h>
#include <values/Stream.h>
#include <values/String.h>

#include <algorithm>
#include <cmath>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

constinit const ConstantText formKey{"AcroForm"};
constinit const ConstantText fieldsKey{"Fields"};
constinit const ConstantText nameKey{"T"};
constinit const ConstantText fieldTypeKey{"FT"};
constinit const ConstantText defaultAppearanceKey{"DA"};
constinit const ConstantText defaultResourcesKey{"DR"};
constinit const ConstantText rectKey{"Rect"};
constinit const ConstantText pageKey{"P"};
constinit const ConstantText structParentKey{"StructParent"};
constinit const ConstantText appearanceKey{"AP"};
// Entries that are coordinates, two and two, or arrays of such.
constinit const ConstantText coordinateKeys[] = {ConstantText("QuadPoints"), ConstantText("Vertices"),
    ConstantText("L"), ConstantText("CL"), ConstantText("InkList")};

using Values = std::vector<Ref<Value>>;

Values elementsOf(const Ref<Array>& array)
{
    Values elements;
    for (std::uint64_t i = 0; array && i < array->size(); ++i)
        elements.push_back(array->get(i));
    return elements;
}

// The turn of a matrix of right angles, in degrees, clockwise.
int turnOf(const Matrix& matrix)
{
    if (std::fabs(matrix.a) >= std::fabs(matrix.b))
        return matrix.a >= 0 ? 0 : 180;
    return matrix.b < 0 ? 90 : 270;
}

Ref<Value> arrayOfBox(const Rectangle& box)
{
    return arrayOf({box.left, box.bottom, box.right, box.top});
}

// Numbers two and two as the coordinates of the page; arrays among them likewise, down to one level.
Ref<Value> moved(const Document& document, const Ref<Array>& coordinates, const Matrix& matrix, int levels = 2)
{
    Values elements = elementsOf(coordinates);
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (const auto inner = followAs<Array>(document, elements[i]); inner && levels > 1) {
            elements[i] = moved(document, inner, matrix, levels - 1);
            continue;
        }
        const auto x = numberOf(followAll(document, elements[i]));
        const auto y = i + 1 < elements.size() ? numberOf(followAll(document, elements[i + 1])) : std::nullopt;
        if (!x || !y)
            continue;
        const Rectangle point = matrix.applied({*x, *y, *x, *y});
        elements[i] = numberValue(point.left);
        elements[++i] = numberValue(point.bottom);
    }
    return Array::create(elements);
}

} // namespace

AnnotationCopies::AnnotationCopies(Edit& edit, const Ref<Document>& foreign, ValueCopying& copying) noexcept
    : _edit(edit), _foreign(*foreign), _copying(copying),
      _copiesLeft(Limits::maxAnnotationCopies(objectsOf(foreign).size() + objectsOf(edit.document()).size()))
{
}

std::optional<Refusal> AnnotationCopies::copy(const Page& page, const Page& foreign, const Matrix& matrix) noexcept
{
    readForms();
    const std::vector<Annotation> annotations = annotationsOf(foreign);
    if (annotations.empty())
        return {};
    if (annotations.size() > _copiesLeft)
        return Refusal{Reason::LimitReached, "the annotations of the other document are too many", ErrOutOfRange};
    _copiesLeft -= annotations.size();
    if (foreign.object && page.object)
        _copying.replace(foreign.object, referenceTo(*page.object));
    for (const Annotation& annotation : annotations)
        if (annotation.object)
            _copying.replace(annotation.object, annotation.copy);
    const auto [place, isFirst] = _annots.try_emplace(page.dictionary.get());
    Values& list = place->second;
    if (isFirst)
        list = elementsOf(followEntryAs<Array>(*_edit.document(), *page.dictionary, PageKeys::annots));
    _copiesLeft -= std::min(_copiesLeft, isFirst ? list.size() : 0);
    Fields fields;
    for (const Annotation& annotation : annotations) {
        const Ref<Dictionary> copied = copyAnnotation(annotation, matrix);
        if (!copied || !addToForm(annotation, copied, fields))
            return codeRefusal(Error::get(), "an annotation of the other document: ");
        if (page.object)
            copied->set(pageKey, referenceTo(*page.object));
        _edit.objects.set(annotation.copy, copied);
        list.push_back(annotation.copy);
    }
    for (auto& [original, field] : fields)
        field.dictionary->set(PageKeys::kids, Array::create(field.kids));
    _edit.set(page.dictionary, PageKeys::annots, Array::create(list));
    return {};
}

// Those that can come along, with places for their copies.
std::vector<AnnotationCopies::Annotation> AnnotationCopies::annotationsOf(const Page& foreign) noexcept
{
    std::vector<Annotation> annotations;
    for (const Ref<Value>& each :
        elementsOf(followEntryAs<Array>(_foreign, *foreign.dictionary, PageKeys::annots))) {
        Annotation annotation;
        annotation.dictionary = followAs<Dictionary>(_foreign, each);
        if (const auto reference = valueAs<ObjectRef>(each))
            annotation.object = _foreign.object(reference);
        if (!annotation.dictionary)
            continue;
        if (isSignature(annotation.dictionary)) {
            ++_signatureCount;
            continue;
        }
        annotation.copy = _edit.objects.reserve();
        annotations.push_back(std::move(annotation));
    }
    return annotations;
}

bool AnnotationCopies::isSignature(Ref<Dictionary> field) const noexcept
{
    for (std::size_t level = 0; field && level < Limits::maxFieldLevels; ++level) {
        if (const Ref<Value> type = followEntry(_foreign, *field, fieldTypeKey))
            return isNamed(type, "Sig");
        field = followEntryAs<Dictionary>(_foreign, *field, PageKeys::parent);
    }
    return false;
}

// A copy of a field or annotation without what ties it to its own document.
Ref<Dictionary> AnnotationCopies::copyEntries(const Dictionary& dictionary) noexcept
{
    const Ref<Dictionary> loose = Dictionary::create();
    const auto keys = dictionary.keys();
    for (const Ref<::String>& key : *keys)
        if (!key->equals(PageKeys::kids) && !key->equals(PageKeys::parent) && !key->equals(pageKey)
            && !key->equals(structParentKey))
            loose->set(key, dictionary.find(key));
    const Ref<Value> copied = _copying.copy(loose);
    return valueAs<Dictionary>(copied);
}

// Null with a code.
Ref<Dictionary> AnnotationCopies::copyAnnotation(const Annotation& annotation, const Matrix& matrix) noexcept
{
    Ref<Dictionary> copied = copyEntries(*annotation.dictionary);
    if (!copied)
        return nullptr;
    if (const auto box = rectangleOf(_foreign, annotation.dictionary->find(rectKey)))
        copied->set(rectKey, arrayOfBox(matrix.applied(*box)));
    for (const Ref<::String>& key : coordinateKeys)
        if (const auto coordinates = followEntryAs<Array>(_foreign, *annotation.dictionary, key))
            copied->set(key, moved(_foreign, coordinates, matrix));
    if (turnOf(matrix) != 0)
        turnAppearances(copied, matrix);
    return copied;
}

// Viewers fit an appearance into its rectangle, but don't turn it.
void AnnotationCopies::turnAppearances(const Ref<Dictionary>& annotation, const Matrix& matrix) noexcept
{
    const auto appearances = valueAs<Dictionary>(_edit.objects.resolve(annotation->find(appearanceKey)));
    if (!appearances)
        return;
    const Ref<Dictionary> result = Dictionary::create();
    const auto keys = appearances->keys();
    for (const Ref<::String>& key : *keys) {
        const Ref<Value> appearance = appearances->find(key);
        const auto states = valueAs<Dictionary>(_edit.objects.resolve(appearance));
        if (!states) {
            result->set(key, turned(appearance, matrix));
            continue;
        }
        const Ref<Dictionary> turnedStates = Dictionary::create();
        const auto names = states->keys();
        for (const Ref<::String>& name : *names)
            turnedStates->set(name, turned(states->find(name), matrix));
        result->set(key, turnedStates);
    }
    annotation->set(appearanceKey, result);
}

// A reference to a copy of the stream with another matrix; the value itself where it leads to none.
Ref<Value> AnnotationCopies::turned(const Ref<Value>& appearance, const Matrix& matrix) noexcept
{
    const auto stream = valueAs<Stream>(_edit.objects.resolve(appearance));
    const Ref<Dictionary> dictionary = stream ? stream->dict() : nullptr;
    if (!dictionary)
        return appearance;
    Ref<Value>& place = _turned[{stream.get(), turnOf(matrix)}];
    if (place)
        return place;
    Matrix own;
    const auto numbers = valueAs<Array>(_edit.objects.resolve(dictionary->find(PageKeys::matrix)));
    double* const parts[] = {&own.a, &own.b, &own.c, &own.d, &own.e, &own.f};
    for (std::size_t i = 0; numbers && numbers->size() == std::size(parts) && i < std::size(parts); ++i)
        *parts[i] = numberOf(_edit.objects.resolve(numbers->get(i))).value_or(*parts[i]);
    own = own.then(Matrix::turning(turnOf(matrix)));
    const Ref<Stream> copied = withEntry(_edit.document(), stream, PageKeys::matrix,
        arrayOf({own.a, own.b, own.c, own.d, own.e, own.f}));
    place = copied ? Ref<Value>(_edit.objects.add(copied)) : appearance;
    return place;
}

// Gives a widget the fields above it, in copies of this page, and enters the topmost. False with a code.
bool AnnotationCopies::addToForm(
    const Annotation& annotation, const Ref<Dictionary>& copy, Fields& fields) noexcept
{
    if (!isNamed(followEntry(_foreign, *annotation.dictionary, PageKeys::subtype), "Widget"))
        return true;
    Ref<ObjectRef> below = annotation.copy;
    Ref<Dictionary> belowDictionary = copy;
    Ref<Dictionary> above = followEntryAs<Dictionary>(_foreign, *annotation.dictionary, PageKeys::parent);
    for (std::size_t level = 0; above && level < Limits::maxFieldLevels; ++level) {
        const auto [place, isNew] = fields.try_emplace(above.get());
        Field& field = place->second;
        if (isNew) {
            field.dictionary = copyEntries(*above);
            if (!field.dictionary)
                return false;
            field.reference = _edit.objects.add(field.dictionary);
        }
        belowDictionary->set(PageKeys::parent, field.reference);
        field.kids.push_back(below);
        if (!isNew)
            return true;
        below = field.reference;
        belowDictionary = field.dictionary;
        above = followEntryAs<Dictionary>(_foreign, *above, PageKeys::parent);
    }
    if (belowDictionary->find(nameKey))
        addRoot(below, belowDictionary);
    return true;
}

void AnnotationCopies::addRoot(const Ref<ObjectRef>& reference, const Ref<Dictionary>& field) noexcept
{
    field->set(nameKey, freeName(field->find(nameKey)));
    if (_foreignForm && !field->find(defaultAppearanceKey))
        if (const Ref<Value> appearance = followEntry(_foreign, *_foreignForm, defaultAppearanceKey))
            field->set(defaultAppearanceKey, appearance);
    _roots.push_back(reference);
}

Ref<Value> AnnotationCopies::freeName(const Ref<Value>& name) noexcept
{
    const auto held = valueAs<PDF::String>(_edit.objects.resolve(name));
    const Ref<::String> text = held ? held->asText() : ::String::create();
    if (_names.insert(toUtf8(text)).second)
        return name;
    // The numbers that were given out for a name are tried no second time.
    for (std::size_t& number = _numbers[toUtf8(text)];;) {
        const Ref<::String> numbered = text->concat(("+" + std::to_string(++number)).c_str());
        if (_names.insert(toUtf8(numbered)).second)
            return PDF::String::create(numbered);
    }
}

void AnnotationCopies::readForms() noexcept
{
    if (_areFormsRead)
        return;
    _areFormsRead = true;
    const Document& document = *_edit.document();
    _catalog = followEntryAs<Dictionary>(document, *document.trailer(), PageKeys::root);
    _form = _catalog ? followEntryAs<Dictionary>(document, *_catalog, formKey) : nullptr;
    const auto foreignCatalog = followEntryAs<Dictionary>(_foreign, *_foreign.trailer(), PageKeys::root);
    _foreignForm = foreignCatalog ? followEntryAs<Dictionary>(_foreign, *foreignCatalog, formKey) : nullptr;
    for (const Ref<Value>& each : elementsOf(_form ? followEntryAs<Array>(document, *_form, fieldsKey) : nullptr)) {
        const auto field = followAs<Dictionary>(document, each);
        if (const auto name = field ? followEntryAs<PDF::String>(document, *field, nameKey) : nullptr)
            _names.insert(toUtf8(name->asText()));
    }
}

std::optional<Refusal> AnnotationCopies::finish() noexcept
{
    if (_roots.empty() || !_catalog || completeForm())
        return {};
    return codeRefusal(Error::get(), "the form of the other document: ");
}

// False with a code.
bool AnnotationCopies::completeForm() noexcept
{
    const Document& document = *_edit.document();
    Ref<Dictionary> form = _form;
    if (!form) {
        form = Dictionary::create();
        _edit.set(_catalog, formKey, form);
    }
    Values fields = elementsOf(followEntryAs<Array>(document, *form, fieldsKey));
    fields.insert(fields.end(), _roots.begin(), _roots.end());
    _edit.set(form, fieldsKey, Array::create(fields));
    const auto resources =
        _foreignForm ? followEntryAs<Dictionary>(_foreign, *_foreignForm, defaultResourcesKey) : nullptr;
    if (!resources || _edit.document().get() == &_foreign)
        return true;
    const Ref<Value> copied = _copying.copy(resources);
    const auto ours = followEntryAs<Dictionary>(document, *form, defaultResourcesKey);
    if (!copied)
        return false;
    if (!ours)
        return _edit.set(form, defaultResourcesKey, copied), true;
    // Names that are in use keep what they have: most are the standard fonts on both sides.
    const auto added = valueAs<Dictionary>(copied);
    const auto categories = added->keys();
    for (const Ref<::String>& category : *categories) {
        const auto names = valueAs<Dictionary>(_edit.objects.resolve(added->find(category)));
        const auto own = followEntryAs<Dictionary>(document, *ours, category);
        if (!own)
            _edit.set(ours, category, added->find(category));
        const auto keys = names ? names->keys() : nullptr;
        for (std::size_t i = 0; own && keys && i < keys->size(); ++i)
            if (!own->find(keys->get(i)))
                _edit.set(own, keys->get(i), names->find(keys->get(i)));
    }
    return true;
}

} // namespace Host
