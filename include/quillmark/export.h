#pragma once

/// Marks what libquillmark offers. Everything else in it is hidden.
#if defined(_WIN32)
#define QUILLMARK_API  // only a static library there
#else
#define QUILLMARK_API __attribute__((visibility("default")))
#endif
