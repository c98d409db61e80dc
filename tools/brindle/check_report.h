// The problems of checked scripts as text, as JSON and as SARIF 2.1.0.
// Room: tools. Used by: the "check" command.
// May touch: nothing.
// Must not: change or leave out a problem.
// Invariant: every form is UTF-8, whatever bytes the names of files hold.
#pragma once

#include <brindle/check.h>

#include <string>
#include <vector>

struct CheckedFile {
  std::string name; // as it was given
  std::vector<CProblem> problems;
};

[[nodiscard]] std::string TextReport(const std::vector<CheckedFile>& files);
[[nodiscard]] std::string JsonReport(const std::vector<CheckedFile>& files);
[[nodiscard]] std::string SarifReport(const std::vector<CheckedFile>& files);
