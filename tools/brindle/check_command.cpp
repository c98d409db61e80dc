#include "check_command.h"

#include "check_report.h"

#include <brindle/check.h>
#include <brindle/environment.h>

#include <iostream>

namespace {

struct Options {
  std::vector<std::string> files;
  std::vector<std::string> functions;
  std::string format = "text";
  std::string codePage = "UTF-8";
  bool strict = false;
  bool codes = false;
};

void PrintCodes() {
  for (const CProblemCode& code : CScriptCheck::GetCodes())
    std::cout << code.code << '\t' << (code.severity == CProblemSeverity::Error ? "error" : "warning") << '\t'
              << code.summary << '\n';
}

int Check(const Options& options) {
  CScriptCheck check;
  for (const std::string& name : options.functions)
    check.AddHostFunction(CString::FromUtf8(name));
  std::vector<CheckedFile> files;
  bool failed = false;
  for (const std::string& name : options.files) {
    static_cast<void>(check.CheckFile(CEnvironment::PathFromNative(name)));
    failed = failed || (options.strict ? !check.GetProblems().empty() : check.GetNumberOfErrors() > 0);
    files.push_back({name, check.GetProblems()});
  }
  const std::string report = options.format == "json"    ? JsonReport(files)
                             : options.format == "sarif" ? SarifReport(files)
                                                         : TextReport(files);
  std::cout << report << std::flush;
  if (!std::cout) {
    std::cerr << "brindle check: the output could not be written\n";
    return kFailed;
  }
  return failed ? kFailed : kDone;
}

} // namespace

int CheckCommand(const Words& words) {
  Options options;
  CLI::App app("Says what is wrong with scripts, without running them.", "brindle check");
  app.footer("The exit status is 1 when there is an error, with --strict when there is anything.");
  app.add_option("--format", options.format, "How problems are written")
      ->check(CLI::IsMember({"text", "json", "sarif"}));
  app.add_flag("--strict", options.strict, "Warnings count like errors");
  app.add_option("--function", options.functions,
                 "A function that the host registers; several with commas between them")
      ->type_name("NAME")
      ->delimiter(',')
      ->allow_extra_args(false);
  app.add_option("--codepage", options.codePage, "The code page of the scripts, UTF-8 by default")->type_name("NAME");
  app.add_flag("--codes", options.codes, "Lists every kind of problem");
  app.add_option("FILE", options.files, "The scripts")->type_name("");
  const auto over = ReadWords(app, words, [&options] {
    if (options.files.empty() && !options.codes)
      throw CLI::RequiredError("FILE");
    if (!CEnvironment::SetAnsiCodePage(options.codePage))
      throw CLI::ValidationError("--codepage", "unknown code page " + options.codePage);
  });
  if (over)
    return *over;
  if (options.codes) {
    PrintCodes();
    return kDone;
  }
  return Check(options);
}
