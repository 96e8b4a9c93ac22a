#pragma once

/// Marks a name that the shared library exports; everything else stays hidden.
#if defined(_WIN32)
#define KQ_API __declspec(dllexport)
#else
#define KQ_API __attribute__((visibility("default")))
#endif
