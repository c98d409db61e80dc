// Which names leave the shared library: everything else stays hidden.
// Room: platform. Used by: every public header.
// Invariant: what carries no mark is no part of the interface.
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
