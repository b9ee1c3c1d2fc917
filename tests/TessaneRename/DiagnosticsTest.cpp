#include <gtest/gtest.h>
#include <signal.h>

#include <QProcess>
#include <QUrlQuery>

#include <filesystem>
#include <fstream>

#include "FakeDesktopServices.h"
#include "FileContents.h"
#include "QtPrinting.h"
#include "TempFolder.h"
#include "TessaneRename/BetaDiary.h"
#include "TessaneRename/BetaReport.h"
#include "TessaneRename/BetaReporter.h"
#include "TessaneRename/Distribution.h"
#include "TessaneRename/InterfaceTranslation.h"
#include "TessaneRename/QuitSignals.h"

namespace tessane {
namespace {

using testing::contentsOf;
using testing::FakeDesktopServices;
using testing::TempFolder;

TEST(BetaDiaryTest, KeepsTheRecentLinesOnceEachAcrossStarts) {
  TempFolder dir;
  const auto file = dir.path() / "Beta" / "Diary.log";
  const QDateTime when(QDate(2026, 5, 1), QTime(9, 30), Qt::UTC);
  {
    BetaDiary diary(file);
    diary.writeLaunch("0.1.0", false, when);
    diary.write("Opened 2 folders", when);
    diary.write("Opened 2 folders", when);  // the same event again
    diary.write("Rename failed:\n“a.jpg”", when);
    EXPECT_EQ(diary.lines(),
              (std::vector<std::string>{"Tessane 0.1.0, started 2026-05-01T09:30:00Z",
                                        "2026-05-01T09:30:00Z Opened 2 folders",
                                        "2026-05-01T09:30:00Z Rename failed: “a.jpg”"}));
  }
  BetaDiary next(file);
  EXPECT_EQ(next.lines().size(), 3u);
  next.writeLaunch("0.1.0", true, when);
  EXPECT_EQ(next.lines().back(), "Tessane 0.1.0, started 2026-05-01T09:30:00Z after a sudden quit");
  for (int i = 0; i < 300; ++i)
    next.write("event " + std::to_string(i), when);
  EXPECT_EQ(next.lines().size(), BetaDiary::kKeptLines);
  EXPECT_EQ(next.lines().back(), "2026-05-01T09:30:00Z event 299");
  EXPECT_EQ(BetaDiary(file).lines(), next.lines());
}

TEST(BetaReportTest, DetailsOnlyWhenIncluded) {
  BetaReport report;
  report.system = {"Tessane 0.1.0", "Debian GNU/Linux 12 (bookworm)", "?", "x86_64", {"it-IT"}};
  report.context = "Folders in the list: /photos";
  report.crash = "Signal: SIGSEGV";
  report.includesDetails = false;
  EXPECT_EQ(report.text(),
            "Tessane 0.1.0, Debian GNU/Linux 12 (bookworm), ?, x86_64, it-IT\n\n"
            "— What happened\n(none)\n");
  report.includesDetails = true;
  EXPECT_TRUE(report.text().contains("Folders in the list: /photos"));
  EXPECT_TRUE(report.text().endsWith("Signal: SIGSEGV\n"));
}

TEST(BetaReportTest, HardwareModelFromFirmwareElseDeviceTreeElseUnknown) {
  TempFolder root;
  EXPECT_EQ(hardwareModel(root.path()), "?");
  std::filesystem::create_directories(root.path() / "proc/device-tree");
  std::ofstream(root.path() / "proc/device-tree/model") << std::string("Raspberry Pi 4\0", 15);
  EXPECT_EQ(hardwareModel(root.path()), "Raspberry Pi 4");
  std::filesystem::create_directories(root.path() / "sys/class/dmi/id");
  std::ofstream(root.path() / "sys/class/dmi/id/product_name") << "ThinkPad X1\n";
  std::ofstream(root.path() / "sys/class/dmi/id/sys_vendor") << "LENOVO\n";
  EXPECT_EQ(hardwareModel(root.path()), "LENOVO ThinkPad X1");
}

class BetaReporterTest : public ::testing::Test {
 protected:
  BetaReporterTest() : reporter_(dir_.path() / "Beta", "0.1.0", desktop_, dir_.path()) {
    reporter_.setAddress("problems@example.org");
    reporter_.setContext("Fix the errors before renaming.", {"/photos/Rome"}, "{\"rules\":[]}");
  }
  TempFolder dir_;
  FakeDesktopServices desktop_;
  BetaReporter reporter_;
};

TEST_F(BetaReporterTest, SendsTheReportAsAnAttachmentElseAsAMailtoAddress) {
  ASSERT_TRUE(reporter_.send("It & stopped = 100% #1", true));
  ASSERT_EQ(desktop_.mails.size(), 1u);
  const MailDraft mail = desktop_.mails[0];
  EXPECT_EQ(mail.recipient, "problems@example.org");
  EXPECT_TRUE(mail.subject.endsWith(": problem report"));
  ASSERT_TRUE(mail.attachment.has_value());
  const QString text = QString::fromUtf8(contentsOf(*mail.attachment).c_str());
  EXPECT_TRUE(text.contains("Error on screen: Fix the errors before renaming."));
  EXPECT_EQ(reporter_.statusMessage(), "Report sent to your mail app");
  EXPECT_TRUE(desktop_.opened.empty());

  desktop_.mailAccepted = false;
  ASSERT_TRUE(reporter_.send("It & stopped = 100% #1", true));
  ASSERT_EQ(desktop_.opened.size(), 1u);
  const QUrl url = desktop_.opened[0];
  EXPECT_EQ(url.scheme(), "mailto");
  EXPECT_EQ(url.path(), "problems@example.org");
  const QUrlQuery query(url);
  EXPECT_EQ(query.queryItemValue("subject", QUrl::FullyDecoded), mail.subject);
  // The body is the report itself, every character intact.
  const QString body = query.queryItemValue("body", QUrl::FullyDecoded);
  EXPECT_TRUE(body.contains("— What happened\nIt & stopped = 100% #1\n"));
  EXPECT_EQ(body.section("— Diary", 0, 0), text.section("— Diary", 0, 0));
}

// The developers read the report: its header names the build, its headings are in English whatever
// the interface speaks, and the user's words stay as typed.
TEST_F(BetaReporterTest, TheHeaderNamesTheBuildAndTheHeadingsStayEnglish) {
  const InterfaceTranslation italian(AppLanguage::italian, QLocale("en_US"));
  reporter_.setContext({}, {}, "{}");
  const QString text = reporter_.report("Il nome è sbagliato", true).text();
  const QString build = Distribution::ofThisBuild().buildNumber;
  ASSERT_FALSE(build.isEmpty());
  EXPECT_TRUE(text.startsWith("Tessane 0.1.0 (" + build + "), ")) << text.toStdString();
  for (const char* heading : {"\n\n— What happened\nIl nome è sbagliato\n", "\n\n— On screen\n",
                              "Error on screen: (none)\nFolders in the list: (none)",
                              "\n\n— Rules\n{}", "\n\n— Diary\n"}) {
    EXPECT_TRUE(text.contains(QString::fromUtf8(heading))) << heading << "\n" << text.toStdString();
  }
  EXPECT_TRUE(reporter_.report({}, false).text().endsWith("— What happened\n(none)\n"));
}

TEST_F(BetaReporterTest, WithoutAnAddressNothingIsSent) {
  reporter_.setAddress({});
  EXPECT_FALSE(reporter_.sends());
  EXPECT_FALSE(reporter_.send("Something broke", true));
  EXPECT_TRUE(desktop_.mails.empty());
  EXPECT_TRUE(desktop_.opened.empty());
  if (Distribution::ofThisBuild().reportAddress.isEmpty()) {
    const BetaReporter fresh(dir_.path() / "Beta", "0.1.0", desktop_, dir_.path());
    EXPECT_FALSE(fresh.sends()) << "this build was given no report address";
  }
}

TEST_F(BetaReporterTest, SavesTheReportAtomically) {
  const auto file = dir_.path() / BetaReporter::kSaveName;
  std::ofstream(file) << "an older report";
  ASSERT_TRUE(reporter_.save(file, {}, false));
  EXPECT_EQ(contentsOf(file).find("Folders in the list"), std::string::npos);
  EXPECT_FALSE(reporter_.save(dir_.path() / "no such folder" / "r.txt", {}, true));
}

// One run of the application's start in a process of its own; what it would offer in its report.
struct AppRun {
  QString report;
  QProcess::ExitStatus exit = QProcess::NormalExit;
  QString launchLine() const {
    const qsizetype at = report.lastIndexOf("Tessane 0.1.0, started ");
    return at < 0 ? QString() : report.mid(at).section('\n', 0, 0);
  }
};

// "loop" runs until `signal` is sent to it.
AppRun runApp(const std::filesystem::path& folder, const QString& mode, int signal = 0) {
  QProcess child;
  child.start(TESSANE_CRASH_CHILD, {QString::fromStdString(folder.string()), mode});
  EXPECT_TRUE(child.waitForStarted());
  QByteArray out;
  while (!out.contains("ready\n") && child.waitForReadyRead(10000))
    out += child.readAllStandardOutput();
  if (mode == "wait") child.kill();  // SIGKILL: nothing of the process runs any more
  if (mode == "loop") ::kill(static_cast<pid_t>(child.processId()), signal);
  child.waitForFinished(10000);
  out += child.readAllStandardOutput();
  return AppRun{QString::fromUtf8(out), child.exitStatus()};
}

TEST(CrashWatchTest, AKilledRunIsNoticedAtTheNextStartAndANormalQuitIsNot) {
  TempFolder dir;
  const auto beta = dir.path() / "Beta";

  AppRun first = runApp(beta, "quit");
  EXPECT_TRUE(first.launchLine().endsWith("Z")) << first.report.toStdString();
  EXPECT_FALSE(first.report.contains("— Crash"));

  AppRun killed = runApp(beta, "wait");
  EXPECT_EQ(killed.exit, QProcess::CrashExit);

  AppRun next = runApp(beta, "quit");
  EXPECT_TRUE(next.launchLine().endsWith(" after a sudden quit")) << next.report.toStdString();
  EXPECT_TRUE(next.report.contains("— Crash\nThe previous run ended without quitting"))
      << next.report.toStdString();

  AppRun afterNormalQuit = runApp(beta, "quit");
  EXPECT_FALSE(afterNormalQuit.launchLine().endsWith(" after a sudden quit"));
  EXPECT_FALSE(afterNormalQuit.report.contains("— Crash"));
  EXPECT_FALSE(std::filesystem::exists(beta / "Running"));
}

// A logout, a closed terminal and Ctrl+C end the application as a quit does.
TEST(CrashWatchTest, TheSignalsThatAskToEndAreANormalQuit) {
  TempFolder dir;
  const auto beta = dir.path() / "Beta";
  for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
    const AppRun asked = runApp(beta, "loop", signal);
    EXPECT_EQ(asked.exit, QProcess::NormalExit) << signal;
    const AppRun next = runApp(beta, "quit");
    EXPECT_FALSE(next.launchLine().endsWith(" after a sudden quit")) << next.report.toStdString();
    EXPECT_FALSE(next.report.contains("— Crash"));
    EXPECT_TRUE(
        next.report.contains(QStringLiteral("Asked to quit (%1)\n").arg(QuitSignals::name(signal))))
        << next.report.toStdString();
  }
}

TEST(CrashWatchTest, ACrashLeavesItsSignalOrExceptionAndTheStack) {
  TempFolder dir;
  const auto beta = dir.path() / "Beta";

  EXPECT_EQ(runApp(beta, "segv").exit, QProcess::CrashExit);
  AppRun next = runApp(beta, "quit");
  EXPECT_TRUE(next.launchLine().endsWith(" after a sudden quit"));
  const QString crash = next.report.section("— Crash\n", 1);
  EXPECT_TRUE(crash.startsWith("Signal: SIGSEGV\n")) << crash.toStdString();
  EXPECT_TRUE(crash.contains("CrashWatchChild")) << crash.toStdString();  // the stack's symbols

  EXPECT_EQ(runApp(beta, "throw").exit, QProcess::CrashExit);
  const QString thrown = runApp(beta, "quit").report.section("— Crash\n", 1);
  EXPECT_TRUE(thrown.startsWith("Exception: std::runtime_error: boom in the preview\n"))
      << thrown.toStdString();
  EXPECT_TRUE(thrown.contains("\nSignal: SIGABRT\n"));
}

}  // namespace
}  // namespace tessane
