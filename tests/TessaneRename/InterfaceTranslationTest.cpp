#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QLocale>

#include <cerrno>

#include "QtPrinting.h"
#include "RenameEngine/CameraBodies.h"
#include "TessaneRename/AppCommands.h"
#include "TessaneRename/InterfaceTranslation.h"
#include "TessaneRename/Messages.h"
#include "TessaneRename/RuleScope.h"
#include "TessaneRename/TestApplication.h"

namespace tessane {
namespace {

class Translation : public ::testing::Test {
 protected:
  void SetUp() override { testing::coreApplication(); }
};

TEST_F(Translation, SystemFollowsTheFirstPreferredLanguageSpokenHere) {
  EXPECT_EQ(InterfaceTranslation::languageCodeFor(AppLanguage::system, QLocale("it_IT")), "it");
  EXPECT_EQ(InterfaceTranslation::languageCodeFor(AppLanguage::system, QLocale("it_CH")), "it");
  EXPECT_EQ(InterfaceTranslation::languageCodeFor(AppLanguage::system, QLocale("en_GB")), "en");
  EXPECT_EQ(InterfaceTranslation::languageCodeFor(AppLanguage::system, QLocale("de_DE")), "en");
  EXPECT_EQ(InterfaceTranslation::languageCodeFor(AppLanguage::system, QLocale::c()), "en");
  EXPECT_EQ(InterfaceTranslation::languageCodeFor(AppLanguage::english, QLocale("it_IT")), "en");
  EXPECT_EQ(InterfaceTranslation::languageCodeFor(AppLanguage::italian, QLocale("en_US")), "it");
}

TEST_F(Translation, ItalianReachesTheModelsTextsAndLeavesWithTheTranslation) {
  {
    const InterfaceTranslation italian(AppLanguage::italian, QLocale("en_US"));
    EXPECT_EQ(italian.languageCode(), "it");
    EXPECT_EQ(AppCommands::title(CommandID::rename), "Rinomina");
    // (Each text's Italian is the lupdate check's; here, the texts that are put together.)
    EXPECT_EQ(RuleScope::body("A").title(), "Corpo macchina “A”");
    EXPECT_EQ(Messages::filesRenamed(1), "1 file rinominato");
    EXPECT_EQ(Messages::filesRenamed(12), "12 file rinominati");
    EXPECT_EQ(Messages::of(OperationIssue::unknownVariable("dtae")),
              "{dtae} non è un valore conosciuto");
    // The system's usual reasons too, and a name's own "%2" stays as it is.
    EXPECT_EQ(Messages::of(IOError{ENOENT, IOError::Operation::open, "/card/50%2.jpg"}),
              "Impossibile aprire “/card/50%2.jpg”: File o cartella inesistente");
    EXPECT_EQ(Messages::clockSynced("Z6", 120), "Orologio di Z6: +0:02:00");
    // Dates follow a language chosen by hand.
    EXPECT_EQ(QLocale().language(), QLocale::Italian);
  }
  EXPECT_EQ(AppCommands::title(CommandID::rename), "Rename");
  EXPECT_EQ(Messages::filesRenamed(1), "1 file renamed");
  EXPECT_NE(QLocale().language(), QLocale::Italian);
}

TEST_F(Translation, EnglishOnAnItalianSystemStaysEnglish) {
  const InterfaceTranslation english(AppLanguage::english, QLocale("it_IT"));
  EXPECT_EQ(english.languageCode(), "en");
  EXPECT_EQ(Messages::filesRenamed(2), "2 files renamed");
  // The model's English is the engine's, word for word.
  EXPECT_EQ(Messages::clockSyncNote(), ClockSyncResult::kNote);
  EXPECT_EQ(Messages::clockSynced("Z6", 120), "Z6 clock: +0:02:00");
  EXPECT_EQ(Messages::clockSynced("Z6", 0), "Z6 was already in time");
  EXPECT_EQ(Messages::of(IOError{EACCES, IOError::Operation::open, "/card"}),
            "Couldn’t open “/card”: Permission denied");
}

}  // namespace
}  // namespace tessane
