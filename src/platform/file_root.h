// FileRoot: a folder that no path leads out of.
// Room: platform. Used by: CFile, while a scope lasts; the interpreter and io, for what names files otherwise.
// May touch: the folder and what lies below it.
// Must not: look at anything outside, so that a refusal tells nothing about what is there.
// Invariant: a path is walked component by component from an open folder, and no link is ever followed by the system
// where this class has not read it: what others rename meanwhile leads nowhere else. Hard links and mounts below the
// root belong to it.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brindle {

class FileRoot {
public:
  // Null when there is no such folder.
  [[nodiscard]] static std::shared_ptr<const FileRoot> Open(const std::string& folder);
  FileRoot(const FileRoot&) = delete;
  FileRoot& operator=(const FileRoot&) = delete;
  ~FileRoot();

  // Paths are those of scripts: "\" is "/", at the start it is the root, and letter case counts only where several
  // names differ by it alone. A relative path starts at the current folder when that lies below the root, else at it.

  // As open of the system; -1 with errno, which is EXDEV for a path that leads outside.
  [[nodiscard]] int OpenFile(std::u16string_view path, int flags) const;
  [[nodiscard]] bool RemoveFile(std::u16string_view path) const;
  // As the function of that name (path.h).
  [[nodiscard]] std::vector<std::u16string> FindFiles(std::u16string_view pattern) const;
  // For those who open by name: a path of the system, nothing when there is no such file or folder.
  [[nodiscard]] std::optional<std::string> PathOf(std::u16string_view path) const;
  // How a script names a path of the system ("\" and what follows); nothing when it lies outside.
  [[nodiscard]] std::optional<std::u16string> NameOf(const std::string& native) const;

  // Holds what CFile opens on this thread to a root, as long as it lasts; null: to none.
  class Scope {
  public:
    explicit Scope(const FileRoot* root) noexcept;
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    ~Scope();
    // Whether a path led outside since this scope began.
    [[nodiscard]] bool HasRefused() const noexcept { return m_hasRefused; }

  private:
    friend class FileRoot;
    const FileRoot* m_root;
    Scope* m_outer;
    bool m_hasRefused = false;
  };
  [[nodiscard]] static const FileRoot* Current() noexcept;
  // For tests: whether paths are walked here even where the system can do it in one call.
  static void SetAlwaysWalks(bool always) noexcept;

private:
  struct Place;
  FileRoot(int descriptor, std::string path) : m_nDescriptor(descriptor), m_strPath(std::move(path)) {}

  [[nodiscard]] std::string FromRoot(std::u16string_view path) const;
  [[nodiscard]] bool Walk(const std::string& fromRoot, Place& place) const;
  [[nodiscard]] int OpenExisting(const std::string& fromRoot, int flags) const noexcept;
  static int Refuse() noexcept;

  int m_nDescriptor;
  std::string m_strPath; // absolute and without links, when the root was opened
};

} // namespace brindle
