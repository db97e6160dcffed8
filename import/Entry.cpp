#include <import/Entry.h>

extern "C" {
EXPORTED extern const Import::Entry filesPdfImport;
const Import::Entry filesPdfImport = {FILES_PDF_VERSION, &Import::open, &Import::save};
}
