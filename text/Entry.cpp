#include <text/Entry.h>

extern "C" {
EXPORTED extern const Text::Entry filesPdfText;
const Text::Entry filesPdfText = {FILES_PDF_VERSION, &Text::createEngine};
}
