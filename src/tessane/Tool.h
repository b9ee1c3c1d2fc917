// What every command of the `tessane` tool shares: exit codes, the terminal, and the user's own
// files (settings, history, presets, camera bodies, the crash journal), the same ones the
// application uses, so that a rename made here can be undone there and the other way round.
// Settings and data follow XDG_CONFIG_HOME and XDG_DATA_HOME.
#pragma once

#include <signal.h>

#include <atomic>
#include <filesystem>
#include <memory>
#include <stop_token>
#include <string>
#include <string_view>
#include <thread>

#include "RenameIO/PresetStore.h"
#include "TessaneRename/BodyTable.h"
#include "TessaneRename/Preferences.h"
#include "TessaneRename/RenameHistory.h"

namespace CLI {
class App;
}
class QSettings;

namespace tessane {
struct SafeRenameError;
}

namespace tessane::cli {

constexpr int kExitOk = 0;       // done
constexpr int kExitRefused = 1;  // refused: errors in the preview, nothing to do, bad input
constexpr int kExitUsage = 2;    // wrong usage
constexpr int kExitPartial = 3;  // a batch failed part-way; the stranded files are listed

struct Terminal {
  bool outIsTerminal = false;  // standard output
  bool errIsTerminal = false;  // standard error
  bool color = false;          // on a terminal, unless NO_COLOR is set
  int width = 100;             // columns of standard output (100 when it is not a terminal)

  static Terminal detect();
  // `text` in an ANSI colour when colours are on: "31" red, "33" amber, "32" green, "2" dim.
  std::string paint(std::string_view text, const char* code) const;
};

class Tool {
 public:
  Tool();
  ~Tool();

  const Terminal& terminal() const { return terminal_; }
  QSettings& settings();
  Preferences preferences();
  BodyTable& bodies();
  RenameHistory& history();  // loaded from History.json on first use
  PresetStore presets() const;
  std::filesystem::path journalFolder() const;

  // "tessane: " + message on standard error.
  void error(std::string_view message) const;
  // Asks a yes/no question on the terminal; false without a terminal or on anything but yes.
  bool confirm(std::string_view question) const;

 private:
  Terminal terminal_;
  std::unique_ptr<QSettings> settings_;
  std::unique_ptr<BodyTable> bodies_;
  std::unique_ptr<RenameHistory> history_;
};

// `text` in curly quotes, bytes that are not UTF-8 shown as U+FFFD: “DSC_0001.ARW”.
std::string inQuotes(std::string_view text);

// While files move, Ctrl-C waits: the batch finishes or rolls back, never leaving hidden names.
class HoldInterrupts {
 public:
  HoldInterrupts();
  ~HoldInterrupts();
  HoldInterrupts(const HoldInterrupts&) = delete;
  HoldInterrupts& operator=(const HoldInterrupts&) = delete;

 private:
  struct Saved;
  std::unique_ptr<Saved> saved_;
};

// Ctrl-C while reading asks the read to stop: SIGINT is blocked in every thread started while
// this lives and taken by a watcher thread, which turns it into a stop request at once. The
// usual handling is back afterwards.
class InterruptWatch {
 public:
  InterruptWatch();
  ~InterruptWatch();
  InterruptWatch(const InterruptWatch&) = delete;
  InterruptWatch& operator=(const InterruptWatch&) = delete;

  std::stop_token token() const { return stop_.get_token(); }
  bool interrupted() const { return interrupted_.load(); }

 private:
  sigset_t previous_{};
  std::stop_source stop_;
  std::atomic<bool> done_{false};
  std::atomic<bool> interrupted_{false};
  std::thread watcher_;
};

// Reports a batch the safe renamer refused or could not finish in the system's words, and
// returns the exit code: kExitPartial with the stranded files listed, else kExitRefused.
int reportBatchFailure(const Tool& tool, const SafeRenameError& error);

// Each family of commands adds its subcommands to the app; a command's callback stores its exit
// code in `exitCode`.
void addListCommand(CLI::App& app, Tool& tool, int& exitCode);
void addRenameCommands(CLI::App& app, Tool& tool, int& exitCode);   // preview, rename
void addHistoryCommands(CLI::App& app, Tool& tool, int& exitCode);  // undo, history, revert,
                                                                    // restore-originals
void addMetaCommand(CLI::App& app, Tool& tool, int& exitCode);      // meta
void addPresetCommands(CLI::App& app, Tool& tool, int& exitCode);   // presets …
void addBodyCommands(CLI::App& app, Tool& tool, int& exitCode);     // bodies …
void addDemoCommand(CLI::App& app, Tool& tool, int& exitCode);      // demo

}  // namespace tessane::cli
