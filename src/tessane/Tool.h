// What every command of the `tessane` tool shares: exit codes, the terminal, and the user's own
// files (settings, history, presets, camera bodies, the crash journal), through the same
// application context the windows use, so that a rename made here can be undone there and the
// other way round.
#pragma once

#include <signal.h>

#include <atomic>
#include <filesystem>
#include <memory>
#include <stop_token>
#include <string>
#include <string_view>
#include <thread>

#include "TessaneRename/AppContext.h"

namespace CLI {
class App;
}
class QSettings;

namespace tessane {
struct PlanProblem;
namespace BatchRunner {
struct Failure;
}
}  // namespace tessane

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

  const Terminal& terminal() const { return terminal_; }
  AppContext& app() { return app_; }
  QSettings& settings() { return app_.settings(); }
  Preferences preferences() { return app_.preferences(); }
  BodyTable& bodies() { return app_.bodies(); }
  RenameHistory& history() { return app_.history(); }  // loaded from History.json on first use
  PresetStore presets() const { return app_.presets(); }
  std::filesystem::path journalFolder() const { return app_.journalFolder(); }
  SystemFileRenaming& fileSystem() { return app_.fileSystem(); }

  // "tessane: " + message on standard error.
  void error(std::string_view message) const;
  // Asks a yes/no question on the terminal; false without a terminal or on anything but yes.
  bool confirm(std::string_view question) const;

 private:
  Terminal terminal_;
  AppContext app_;
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

// Reports a batch that was refused or could not finish in the system's words, and returns the
// exit code: kExitPartial with the stranded files listed, else kExitRefused.
int reportBatchFailure(const Tool& tool, const BatchRunner::Failure& failure);
// Reports a problem of planning and returns kExitRefused (kExitUsage for an ambiguous id).
int reportProblem(const Tool& tool, const PlanProblem& problem);

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
