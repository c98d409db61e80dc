// The dialog scripts of the script tests, run in windows: each "# input:" line, a command of the console's dialogs,
// becomes events of real controls, and what is printed and reported must be the same as there.
#include "qt/player.h"
#include "qt/recorded_windows.h"
#include "qt/window_driver.h"

#include "brindle/interpreter.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

#include <algorithm>
#include <chrono>
#include <deque>
#include <filesystem>
#include <fstream>
#include <optional>

namespace {

namespace fs = std::filesystem;

struct Case {
  fs::path script;
  std::string printed;
  std::vector<std::string> errors; // their messages
  std::deque<QString> input;
};

std::string ReadFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Nothing for a script that is the console's alone.
std::optional<Case> ReadCase(const fs::path& script) {
  static const QRegularExpression kMarker(
      QStringLiteral("#[ \t]*(expect(?![A-Za-z])|(?:answer|input|options|exit)(?=:))(.*)"));
  static const QRegularExpression kError(
      QStringLiteral("^[ \t]+error[ \t]+\\d+(?:[ \t]+(?:at[ \t]+\"(?:[^\"\\\\]|\\\\.)*\"|anywhere))?:[ \t]?(.*)$"));
  if (fs::exists(fs::path(script).replace_extension(".err")))
    return std::nullopt; // a form of the console
  Case found;
  found.script = script;
  QString answer = QStringLiteral("ok");
  bool inputEnds = false;
  for (const QString& line : QString::fromStdString(ReadFile(script)).split(QLatin1Char('\n'))) {
    const auto marker = kMarker.match(line);
    if (!marker.hasMatch())
      continue;
    const QString word = marker.captured(1);
    QString rest = marker.captured(2);
    if (word == QLatin1String("options"))
      return std::nullopt;
    if (word == QLatin1String("input")) {
      found.input.push_back(rest.mid(1).trimmed());
    } else if (word == QLatin1String("answer")) {
      answer = rest.mid(1).trimmed();
    } else if (const auto error = kError.match(rest); error.hasMatch()) {
      found.errors.push_back(error.captured(1).replace(QStringLiteral("\\n"), QStringLiteral("\n")).toStdString());
      inputEnds = inputEnds || answer == QLatin1String("end of input");
      if (!inputEnds)
        found.input.push_back(answer);
      answer = QStringLiteral("ok");
    } else if (word == QLatin1String("expect")) {
      rest = rest.mid(1);
      found.printed += (rest.startsWith(QLatin1Char(' ')) ? rest.mid(1) : rest).toStdString() + "\n";
    }
  }
  if (const fs::path out = fs::path(script).replace_extension(".out"); fs::exists(out))
    found.printed = ReadFile(out);
  return found;
}

// The fresh folder that every script test runs in.
class Folder {
public:
  explicit Folder(const fs::path& script) : m_before(fs::current_path()) {
    std::string pattern = (fs::temp_directory_path() / "brindle-qt-XXXXXX").string();
    m_path = mkdtemp(pattern.data());
    const fs::path data = fs::path(script).replace_extension(".data");
    if (fs::is_directory(data))
      fs::copy(data, m_path, fs::copy_options::recursive);
    if (fs::is_directory(script.parent_path() / "include"))
      fs::copy(script.parent_path() / "include", m_path / "include", fs::copy_options::recursive);
    fs::copy_file(script, m_path / script.filename());
    fs::current_path(m_path);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() {
    fs::current_path(m_before);
    fs::remove_all(m_path);
  }
  // A file dialog gives the whole path, where a line of input is what it is.
  [[nodiscard]] std::string WithoutFolder(std::string text) const {
    const std::string prefix = m_path.string() + "/";
    for (std::size_t at = text.find(prefix); at != std::string::npos; at = text.find(prefix, at))
      text.erase(at, prefix.size());
    return text;
  }

private:
  fs::path m_before;
  fs::path m_path;
};

void Play(const Case& test) {
  const Folder folder(test.script);
  RecordedWindows windows;
  Player player(test.input);
  {
    WindowDriver driver;
    driver.Otherwise([&player](QWidget& window) { player.Act(window); });
    CBrindle interpreter;
    interpreter.SetUserInterface(&windows);
    ASSERT_TRUE(interpreter.ExecuteProgram(CString::FromUtf8(test.script.filename().string())));
  }
  EXPECT_EQ(folder.WithoutFolder(windows.printed), test.printed);
  std::vector<std::string> messages;
  for (const std::string& error : windows.errors)
    messages.push_back(error.substr(0, error.find('\n', error.find('\n') == 0 ? 1 : 0)));
  EXPECT_EQ(messages.size(), test.errors.size());
  for (std::size_t i = 0; i < std::min(messages.size(), test.errors.size()); ++i)
    EXPECT_TRUE(windows.errors[i].starts_with(test.errors[i] + "\n")) << windows.errors[i];
  EXPECT_EQ(player.LinesLeft(), 0U) << "lines of input that nothing asked for";
  EXPECT_EQ(player.Refused(), std::vector<std::string>()) << "commands that no control takes";
}

} // namespace

TEST(QtScriptCases, print_and_report_the_same_as_on_the_console) {
  std::vector<fs::path> scripts;
  for (const auto& entry : fs::recursive_directory_iterator(BRINDLE_DIALOG_SCRIPTS))
    if (entry.path().extension() == ".bas" && entry.path().parent_path().filename() != "include")
      scripts.push_back(entry.path());
  std::sort(scripts.begin(), scripts.end());
  int played = 0;
  for (const fs::path& script : scripts) {
    const auto test = ReadCase(script);
    if (!test)
      continue;
    SCOPED_TRACE(script.filename().string());
    const auto started = std::chrono::steady_clock::now();
    Play(*test);
    EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(5));
    ++played;
  }
  EXPECT_GT(played, 15);
  RecordProperty("played", played);
}
