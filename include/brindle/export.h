// Which names leave the shared library: everything else stays hidden.
// Room: platform. Used by: every public header.
#pragma once

#if defined(_WIN32)
#if defined(BRINDLE_BUILDING)
#define BRINDLE_API __declspec(dllexport)
#else
#define BRINDLE_API __declspec(dllimport)
#endif
#else
#define BRINDLE_API __attribute__((visibility("default")))
#endif
