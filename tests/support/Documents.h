#pragma once

// What tests of documents need: files of text, log lines, and every kind of value to be made and looked at.
#include <document/Inspection.h>
#include <values/ArrayObj.h>
#include <values/BooleanObj.h>
#include <values/DictionaryObj.h>
#include <values/NameObj.h>
#include <values/NullObj.h>
#include <values/NumberObj.h>
#include <values/ObjectObj.h>
#include <values/ObjectRefObj.h>
#include <values/StreamObj.h>
#include <values/StringObj.h>

#include "LogCapture.h"
#include "PdfText.h"
