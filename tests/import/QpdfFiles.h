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

} // namespace Tests
