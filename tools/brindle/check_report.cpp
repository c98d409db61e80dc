#include "check_report.h"

#include <brindle/version.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>

namespace {

using Json = nlohmann::ordered_json;

const char* SeverityName(CProblemSeverity severity) {
  return severity == CProblemSeverity::Error ? "error" : "warning";
}

std::string Written(const Json& value) {
  return value.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string Counted(int count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

// A path as a URI reference: what is no letter, digit or one of "/-._~" goes by its bytes.
std::string UriOf(const std::string& path) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string uri = path.starts_with('/') ? "file://" : "";
  for (const char unit : path) {
    const auto byte = static_cast<unsigned char>(unit);
    const bool plain = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
                       std::string_view("/-._~").find(unit) != std::string_view::npos;
    if (plain) {
      uri += unit;
    } else {
      uri += '%';
      uri += kDigits[byte >> 4];
      uri += kDigits[byte & 15];
    }
  }
  return uri;
}

Json LocationOf(const CProblem& problem) {
  Json region = {{"startLine", problem.line}, {"startColumn", problem.column}, {"endColumn", problem.endColumn}};
  return {{"physicalLocation",
           {{"artifactLocation", {{"uri", UriOf(problem.file.ToUtf8())}}}, {"region", std::move(region)}}}};
}

} // namespace

std::string TextReport(const std::vector<CheckedFile>& files) {
  std::string text;
  int errors = 0;
  int warnings = 0;
  for (const CheckedFile& file : files) {
    for (const CProblem& problem : file.problems) {
      ++(problem.severity == CProblemSeverity::Error ? errors : warnings);
      text += problem.file.ToUtf8() + ":" + std::to_string(problem.line) + ":" + std::to_string(problem.column) + ": " +
              SeverityName(problem.severity) + ": " + problem.message + " [" + problem.code + "]\n";
      text += "    " + problem.hint + "\n";
    }
  }
  if (errors + warnings > 0)
    text += Counted(errors, "error", "errors") + ", " + Counted(warnings, "warning", "warnings") + "\n";
  return text;
}

std::string JsonReport(const std::vector<CheckedFile>& files) {
  Json list = Json::array();
  int errors = 0;
  int warnings = 0;
  for (const CheckedFile& file : files) {
    Json problems = Json::array();
    for (const CProblem& problem : file.problems) {
      ++(problem.severity == CProblemSeverity::Error ? errors : warnings);
      problems.push_back({{"file", problem.file.ToUtf8()},
                          {"line", problem.line},
                          {"column", problem.column},
                          {"endColumn", problem.endColumn},
                          {"severity", SeverityName(problem.severity)},
                          {"code", problem.code},
                          {"message", problem.message},
                          {"hint", problem.hint}});
    }
    list.push_back({{"script", file.name}, {"problems", std::move(problems)}});
  }
  return Written({{"version", 1}, {"errors", errors}, {"warnings", warnings}, {"scripts", std::move(list)}});
}

std::string SarifReport(const std::vector<CheckedFile>& files) {
  const std::vector<CProblemCode> codes = CScriptCheck::GetCodes();
  Json rules = Json::array();
  for (const CProblemCode& code : codes)
    rules.push_back({{"id", code.code},
                     {"shortDescription", {{"text", code.summary}}},
                     {"defaultConfiguration", {{"level", SeverityName(code.severity)}}}});
  Json results = Json::array();
  for (const CheckedFile& file : files) {
    for (const CProblem& problem : file.problems) {
      const auto rule =
          std::find_if(codes.begin(), codes.end(), [&](const CProblemCode& code) { return code.code == problem.code; });
      results.push_back({{"ruleId", problem.code},
                         {"ruleIndex", rule - codes.begin()},
                         {"level", SeverityName(problem.severity)},
                         {"message", {{"text", problem.message + ". " + problem.hint}}},
                         {"locations", Json::array({LocationOf(problem)})}});
    }
  }
  Json driver = {{"name", "brindle check"}, {"semanticVersion", BRINDLE_VERSION}, {"rules", std::move(rules)}};
  Json run = {
      {"tool", {{"driver", std::move(driver)}}}, {"columnKind", "utf16CodeUnits"}, {"results", std::move(results)}};
  return Written({{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
                  {"version", "2.1.0"},
                  {"runs", Json::array({std::move(run)})}});
}
