#pragma once

// The headers of libqpdf. One that they include is refused by some compilers as C++20; nothing here needs it.
#define JSON_HH
class JSON;
#define POINTERHOLDER_TRANSITION 4 // asks for no pointers of an older kind

#include <qpdf/Pipeline.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFLogger.hh>
#include <qpdf/QUtil.hh>
