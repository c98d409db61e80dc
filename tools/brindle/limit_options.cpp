#include "limit_options.h"

#include <brindle/environment.h>

#include <algorithm>
#include <cmath>
#include <limits>

void LimitOptions::AddTo(CLI::App& app) {
  constexpr std::uint64_t kMostMebibytes = std::uint64_t{1} << 30;
  app.add_option("--max-statements", m_limits.statements, "End the run after so many statements")
      ->check(CLI::Range(std::uint64_t{1}, std::numeric_limits<std::uint64_t>::max()));
  app.add_option("--max-seconds", m_seconds, "End the run after so many seconds, 0.5 for half of one")
      ->check(CLI::Range(0.001, 4'000'000.0));
  app.add_option("--max-memory", m_mebibytes, "End the run when its data takes so many MiB")
      ->check(CLI::Range(std::uint64_t{1}, kMostMebibytes));
  app.add_option("--max-depth", m_limits.callDepth, "End the run when so many procedure calls nest")
      ->check(CLI::Range(1, std::numeric_limits<int>::max()));
  m_pRoot = app.add_option("--root", m_root, "A folder that no path of the script leads out of");
  app.add_option("--forbid", m_forbidden, "What the script may not use: runexe, externals, automation, serial")
      ->delimiter(',')
      ->allow_extra_args(false) // what follows is the script
      ->check(CLI::IsMember({"runexe", "externals", "automation", "serial"}));
}

void LimitOptions::Check() const {
  if (m_pRoot->count() > 0 && m_root.empty())
    throw CLI::ValidationError("--root", "no folder named");
}

bool LimitOptions::Forbids(const char* what) const {
  return std::find(m_forbidden.begin(), m_forbidden.end(), what) != m_forbidden.end();
}

CExecutionLimits LimitOptions::Limits() const {
  CExecutionLimits limits = m_limits;
  limits.milliseconds = static_cast<std::uint32_t>(std::ceil(m_seconds * 1000));
  limits.bytes = m_mebibytes << 20;
  limits.root = CEnvironment::PathFromNative(m_root);
  limits.noPrograms = Forbids("runexe");
  limits.noLibraries = Forbids("externals");
  limits.noAutomation = Forbids("automation");
  limits.noSerialPorts = Forbids("serial");
  return limits;
}
