#include <gtest/gtest.h>

#include <QSettings>
#include <QStringList>

#include <fstream>

#include "FileContents.h"
#include "Rules.h"
#include "TempFolder.h"
#include "TessaneRename/AppLanguage.h"
#include "TessaneRename/BodyTable.h"
#include "TessaneRename/Preferences.h"
#include "TessaneRename/SessionMemory.h"

namespace tessane {
namespace {

using testing::TempFolder;

class Settings : public ::testing::Test {
 protected:
  QSettings& store() {
    if (!settings_) settings_ = std::make_unique<QSettings>(file(), QSettings::IniFormat);
    return *settings_;
  }
  // Writes the store to disk and reads it again, as the next start would.
  void reopen() {
    store().sync();
    settings_.reset();
  }
  QString file() const { return QString::fromStdString((dir_.path() / "settings.conf").string()); }

  TempFolder dir_;
  std::unique_ptr<QSettings> settings_;
};

TEST_F(Settings, DefaultsWhenMissingWrongOrUnknown) {
  Preferences p(store());
  // A preset's counter that leaves them out (decoded over a default Counter) numbers as the
  // settings do.
  const Counter unsaid;
  EXPECT_EQ(unsaid.padding, p.counterDigits());
  EXPECT_EQ(unsaid.start, p.counterStart());

  // A hand-edited file with wrong types and unknown texts.
  reopen();
  {
    std::ofstream out(file().toStdString());
    out << "[General]\ncounterDigits=four\ncounterStart=-7\nresumesSession=maybe\n"
           "revealAfterRename=false\nextensionCase=shouting\nduplicatePolicy=addSuffix\n"
           "batchOrder=asGiven\ntwinKinds=video\n";
  }
  Preferences edited(store());
  EXPECT_EQ(edited.counterDigits(), 4);
  EXPECT_EQ(edited.counterStart(), -7);
  EXPECT_TRUE(edited.resumesSession());
  EXPECT_FALSE(edited.revealAfterRename());
  EXPECT_EQ(edited.extensionCase(), ExtensionCase::keep);
  EXPECT_EQ(edited.duplicatePolicy(), DuplicatePolicy::addSuffix);
  EXPECT_EQ(edited.batchOrder(), std::nullopt);
  EXPECT_EQ(edited.twinKinds(), std::set<TwinKind>{TwinKind::video});
  const TwinOptions twins = edited.twinOptions();
  EXPECT_TRUE(twins.extensions.count("arw") && twins.extensions.count("mp4"));
  EXPECT_FALSE(twins.extensions.count("jpg") || twins.extensions.count("xmp"));
}

TEST_F(Settings, ValuesSurviveTheNextStart) {
  {
    Preferences p(store());
    p.setCounterDigits(6);
    p.setBatchOrder(BatchOrder::name);
    p.setTwinKinds({TwinKind::sidecars, TwinKind::images});
    p.setOriginalNames(OriginalNames::never);
    p.setMissingText("unknown");
    storeLanguage(store(), AppLanguage::italian);
  }
  reopen();
  Preferences p(store());
  EXPECT_EQ(p.counterDigits(), 6);
  EXPECT_EQ(p.batchOrder(), BatchOrder::name);
  EXPECT_EQ(p.twinKinds(), (std::set<TwinKind>{TwinKind::images, TwinKind::sidecars}));
  EXPECT_FALSE(p.remembersOriginalName(dir_.path()));
  EXPECT_EQ(p.missingText(), "unknown");
  EXPECT_EQ(storedLanguage(store()), AppLanguage::italian);
  storeLanguage(store(), AppLanguage::system);
  EXPECT_FALSE(store().contains("appLanguage"));
}

TEST_F(Settings, NoTwinKindsStaysNone) {
  Preferences(store()).setTwinKinds({});
  reopen();
  Preferences p(store());
  EXPECT_EQ(p.twinKinds(), std::set<TwinKind>{});
  EXPECT_TRUE(p.twinOptions().extensions.count("arw")) << "the RAW still leads its group";
  EXPECT_FALSE(p.twinOptions().extensions.count("jpg") || p.twinOptions().extensions.count("xmp"));
}

TEST_F(Settings, MissingTextHasOneOwner) {
  BodyTable table(store());
  Preferences(store()).setMissingText("newer");
  table.setTag("123456", "A");  // a body change must not write back an older missing text
  EXPECT_EQ(Preferences(store()).missingText(), "newer");
  EXPECT_EQ(table.missingText(), "newer");
  table.setMissingText("from the table");
  EXPECT_EQ(Preferences(store()).missingText(), "from the table");
}

TEST_F(Settings, BodyTableKeepsWhatIsStoredAndRefusesBadImports) {
  int changes = 0;
  {
    BodyTable table(store());
    table.setOnChange([&] { ++changes; });
    table.setTag("123456", "A");
    EXPECT_TRUE(table.setOffset("ILCE-7RM5", "+0:02:00"));
    EXPECT_FALSE(table.setOffset("ILCE-7RM5", "1:60:00"));
    table.setMissingText("unknown");
  }
  EXPECT_EQ(changes, 3);
  reopen();
  BodyTable table(store());
  EXPECT_EQ(table.bodies().tags.at("123456"), "A");
  EXPECT_EQ(table.bodies().clockOffsets.at("ILCE-7RM5"), 120);
  EXPECT_EQ(table.missingText(), "unknown");

  const auto exported = dir_.path() / std::string(BodyTable::kExportName);
  ASSERT_FALSE(table.exportTo(exported).has_value());
  const std::string text = testing::contentsOf(exported);
  EXPECT_LT(text.find("\"clockOffsets\""), text.find("\"tags\"")) << "keys sorted";

  const auto notJson = dir_.file("photo.jpg", "\xFF\xD8\xFF");
  EXPECT_FALSE(table.importFrom(notJson));
  EXPECT_FALSE(table.importFrom(dir_.path() / "missing.json"));
  const auto other =
      dir_.file("other.json", R"({"tags":{"123456":"B","999":"C"},"clockOffsets":{}})");
  EXPECT_TRUE(table.importFrom(other));
  EXPECT_EQ(table.bodies().tags.at("999"), "C");

  // A stored table that does not decode reads as empty tables, not as an error.
  store().setValue("cameraBodies", QByteArray("{broken"));
  EXPECT_TRUE(BodyTable(store()).bodies().tags.empty());
}

TEST_F(Settings, SessionMemoryResumesOnlyWhatStillOpens) {
  const auto kept = dir_.path() / "Shoot";
  const auto gone = dir_.path() / "Vanished";
  std::filesystem::create_directory(kept);
  std::filesystem::create_directory(gone);
  RuleStack stack;
  stack.rules = {testing::operationRule(op::ChangeCase{CaseStyle::upper})};
  SessionMemory(store()).save({kept, gone}, stack);
  std::filesystem::remove(gone);
  reopen();
  const SessionMemory::Session session = SessionMemory(store()).restore(true);
  EXPECT_EQ(session.folders, std::vector<std::filesystem::path>{kept});
  EXPECT_EQ(session.stack, stack);
  EXPECT_TRUE(SessionMemory(store()).restore(false).folders.empty());
  store().setValue("lastRules", QByteArray("[1,2"));
  EXPECT_FALSE(SessionMemory(store()).restore(true).stack.has_value());
}

}  // namespace
}  // namespace tessane
