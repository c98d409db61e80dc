// The options by which the runner bounds what a script may take and reach.
// Room: tools. Used by: the command that runs scripts.
// May touch: only its members.
// Must not: apply anything; the command does that.
// Invariant: without options nothing is bounded.
#pragma once

#include "command_line.h"

#include <brindle/limits.h>

#include <cstdint>
#include <string>
#include <vector>

class LimitOptions {
public:
  void AddTo(CLI::App& app);
  // Throws a CLI::ParseError for what cannot be.
  void Check() const;
  [[nodiscard]] CExecutionLimits Limits() const;

private:
  [[nodiscard]] bool Forbids(const char* what) const;

  CExecutionLimits m_limits;
  double m_seconds = 0;
  std::uint64_t m_mebibytes = 0;
  std::string m_root;
  CLI::Option* m_pRoot = nullptr;
  std::vector<std::string> m_forbidden;
};
