// The one home of the version: the build reads it from here.
// Room: platform. Used by: hosts, the runner, the build.
// Invariant: the three numbers and the text say the same.
#pragma once

#define BRINDLE_VERSION_MAJOR 0
#define BRINDLE_VERSION_MINOR 9
#define BRINDLE_VERSION_PATCH 0
#define BRINDLE_VERSION "0.9.0"
