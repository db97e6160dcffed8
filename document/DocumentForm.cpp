#include <document/DocumentObj.h>

#include <document/Keys.h>
#include <document/Report.h>
#include <forms/FormObj.h>
#include <forms/Report.h>
#include <platform/Limits.h>
#include <values/Dictionary.h>

namespace Libraries::Files::PDF {

Ref<Form> DocumentObj::form() noexcept
{
    if (_formSearch == FormSearch::UnderWay)
        return refuse(ErrNotAvailable);
    if (_formSearch == FormSearch::Ahead) {
        _formSearch = FormSearch::UnderWay;
        const bool isOver = loadForm();
        _formSearch = isOver ? FormSearch::Over : FormSearch::Ahead;
        if (!isOver)
            return nullptr;
    }
    if (_formError)
        Error::set(_formError);
    return _form;
}

// False when there is no catalog to search; then nothing is kept. That is told under the document's
// filter, what is wrong with the form under the form's.
bool DocumentObj::loadForm() noexcept
{
    const std::uint32_t code = Error::get();
    const Ref<PDF::Object> root = getCatalog();
    if (!root)
        return report.fail(ErrNoRoot, "Document has no root object");
    const Ref<Dictionary> catalog = root->valueAsDictionary();
    if (!catalog)
        return formReport.fail(ErrNoRoot, "Failed to retrieve root object dictionary");
    Ref<Value> acroForm = catalog->find(Keys::acroForm);
    _formError = acroForm ? makeForm(std::move(acroForm)) : std::uint32_t(ErrNoEntry);
    // The optional lookups in the tree leave codes that are no failures.
    Error::set(code);
    return true;
}

// Makes the form, if there can be one, and gives its code; 0 for a form that is whole.
std::uint32_t DocumentObj::makeForm(Ref<Value> acroForm) noexcept
{
    const Value::Type type = acroForm->type();
    Ref<Dictionary> dictionary = valueAsDict(std::move(acroForm));
    if (!dictionary) {
        formReport.line("AcroForm value is not a Dictionary or Object Reference: ", type);
        return ErrBadCast;
    }
    const Ref<FormObj> made
        = make<FormObj>(Ref<Document>(this), std::move(dictionary), Limits::maxFields(_objects.size()));
    _form = made;
    if (made->isValid())
        return 0;
    formReport.line("Failed to instantiate Form object");
    return ErrFormCreate;
}

} // namespace Libraries::Files::PDF
