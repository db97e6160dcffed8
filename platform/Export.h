#pragma once

// Marks what the shared library shows. Everything else is compiled with hidden visibility.
#define EXPORTED __attribute__((visibility("default")))
