#pragma once

#include <import/Qpdf.h>

#include <qpdf/Buffer.hh>
#include <qpdf/QPDFWriter.hh>

#include <functional>
#include <string>

namespace Tests {

// A file written anew by libqpdf, with what is set.
inline std::string writtenByQpdf(const std::string& file, const std::function<void(QPDFWriter&)>& set)
{
    QPDF document;
    document.setSuppressWarnings(true);
    document.processMemoryFile("", file.data(), file.size());
    QPDFWriter writer(document);
    writer.setOutputMemory();
    writer.setStaticID(true);
    writer.setStreamDataMode(qpdf_s_preserve);
    set(writer);
    writer.write();
    const std::shared_ptr<Buffer> buffer = writer.getBufferSharedPointer();
    return {reinterpret_cast<const char*>(buffer->getBuffer()), buffer->getSize()};
}

// The same, encrypted by a method, with the owner's password "owner". Nobody else may print.
inline std::string encrypted(const std::string& file, const char* user, const char* method)
{
    return writtenByQpdf(file, [&](QPDFWriter& writer) {
        const std::string name = method;
        if (name == "40 bits")
            writer.setR2EncryptionParametersInsecure(user, "owner", false, true, true, true);
        else if (name == "RC4" || name == "AES")
            writer.setR4EncryptionParametersInsecure(
                user, "owner", true, true, true, true, true, false, qpdf_r3p_none, true, name == "AES");
        else
            writer.setR6EncryptionParameters(user, "owner", true, true, true, true, true, false, qpdf_r3p_none, true);
        if (name == "AES in object streams")
            writer.setObjectStreamMode(qpdf_o_generate);
    });
}

} // namespace Tests
