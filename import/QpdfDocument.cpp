#include <import/QpdfDocument.h>

#include <import/Stop.h>
#include <import/Warnings.h>

namespace Import {

namespace {

std::shared_ptr<QPDFLogger> silence()
{
    std::shared_ptr<QPDFLogger> logger = QPDFLogger::create();
    logger->setInfo(logger->discard());
    logger->setWarn(logger->discard());
    logger->setError(logger->discard());
    return logger;
}

} // namespace

// Passwords of older files are not in UTF-8, and which bytes they are depends on who made the file.
std::shared_ptr<QPDF> openQpdf(const std::shared_ptr<Source>& source, const Options& options)
{
    std::vector<std::string> passwords = QUtil::possible_repaired_encodings(options.password);
    passwords.insert(passwords.begin(), options.password);
    passwords.push_back(""); // opens what anybody may open, whatever was given
    for (const std::string& password : passwords) {
        const std::shared_ptr<QPDF> document = QPDF::create();
        document->setLogger(silence());
        document->setSuppressWarnings(true);
        document->setAttemptRecovery(options.isRepairAllowed);
        try {
            document->processInputSource(source, password.c_str());
            return document;
        } catch (const QPDFExc& exception) {
            if (exception.getErrorCode() == qpdf_e_password)
                continue;
            for (const QPDFExc& warning : document->getWarnings()) // which came first
                if (!options.isRepairAllowed && !losesNothing(warning))
                    stop(Reason::BrokenRule, messageOf(warning));
            throw;
        }
    }
    stop(Reason::PasswordNeeded,
        options.password.empty() ? "is encrypted and needs a password" : "is encrypted, and the password is wrong");
}

} // namespace Import
