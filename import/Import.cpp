#include <import/Import.h>

#include <host/base/ErrorWords.h>
#include <import/Conversion.h>
#include <import/Stop.h>
#include <import/Warnings.h>

#include <new>

namespace Import {

namespace {

Host::Result<Imported> import(const Ref<Host::FileStripe>& file, const Options& options)
{
    Imported result;
    result.opened.file = file;
    result.opened.document = Host::PDF::Document::create(convert(file, options, result.report));
    const std::uint32_t code = Error::get();
    if (file->readFailure())
        return *file->readFailure();
    if (!result.opened.document)
        return Host::codeRefusal(code).withPrefix("can't be opened in its classic form: ");
    return result;
}

} // namespace

Host::Result<Imported> open(const std::string& path, const Options& options) noexcept
{
    const Host::Result<Ref<Host::FileStripe>> file = Host::FileStripe::open(path);
    return file ? open(*file, options) : Host::Result<Imported>(file.refusal());
}

Host::Result<Imported> open(const Ref<Host::FileStripe>& file, const Options& options) noexcept
{
    if (!file)
        return Host::codeRefusal(ErrNullArgument);
    try {
        Host::Result<Imported> result = import(file, options);
        return file->isUnchanged() ? std::move(result) : Host::changedMeanwhile();
    } catch (const Stop& stopped) {
        return stopped.refusal;
    } catch (const QPDFExc& exception) {
        const bool isUnsupported = exception.getErrorCode() == qpdf_e_unsupported;
        return Host::Refusal{isUnsupported ? Reason::Unsupported : Reason::BrokenRule, messageOf(exception)};
    } catch (const std::bad_alloc&) {
        return Host::Refusal{Reason::OutOfMemory, "needs more memory than there is"};
    } catch (const std::exception& exception) {
        return Host::Refusal{Reason::BrokenRule, lineOf(exception.what())};
    }
}

} // namespace Import
