// The name builder and the changes panel driven as a user would, on the offscreen platform:
// pieces added, dragged, moved and removed; a pattern completed; changes added, edited, reordered,
// turned off and scoped; a preset saved, marked as modified and loaded again. What is checked is
// what the list of files shows.
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QCompleter>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <QToolButton>

#include <map>
#include <set>

#include "Rules.h"
#include "TessaneRename/ChangeList.h"
#include "TessaneRename/PresetLibrary.h"
#include "TessaneRename/QtPrinting.h"
#include "TessaneRename/RuleKind.h"
#include "TessaneRename/Windows/ChangeEditor.h"
#include "TessaneRename/Windows/ChangesPanel.h"
#include "TessaneRename/Windows/ChipBar.h"
#include "TessaneRename/Windows/FileListModel.h"
#include "TessaneRename/Windows/MainWindow.h"
#include "TessaneRename/Windows/NameBuilderPanel.h"
#include "TessaneRename/Windows/NameField.h"
#include "WindowTest.h"

namespace tessane {
namespace {

namespace fs = std::filesystem;
using testing::TempFolder;
using testing::waitFor;

// The first action of `menu` (or of its submenus) with this text.
QAction* actionIn(QMenu* menu, const QString& text) {
  for (QAction* a : menu->actions()) {
    if (a->text() == text) return a;
    if (a->menu() != nullptr)
      if (QAction* found = actionIn(a->menu(), text)) return found;
  }
  return nullptr;
}

class BuilderAndChanges : public testing::WindowTest {
 protected:
  BuilderAndChanges() { makeWindow(); }

  void open(std::initializer_list<const char*> names) {
    for (const char* name : names)
      photos_.file(name, name);
    model_->open({photos_.path()});
  }

  // Current name → new name, once the preview is current.
  std::map<QString, QString> newNames() {
    EXPECT_TRUE(testing::settled(*model_));
    return testing::shownNames(*window_);
  }
  // Current name → its problem, for the rows that have one.
  std::map<QString, QString> errors() {
    newNames();
    std::map<QString, QString> out =
        testing::shownNames(*window_, FileListModel::status, Qt::ToolTipRole);
    std::erase_if(out, [](const auto& row) { return row.second.isEmpty(); });
    return out;
  }
  ChipBar& chips() const { return *window_->findChild<ChipBar*>(); }
  ChangesPanel& changes() const { return window_->changes(); }
  // A field of the selected change's editor, by its accessible name.
  template <typename T>
  T* field(const QString& name) const {
    for (T* w : changes().editor()->findChildren<T*>())
      if (w->accessibleName() == name) return w;
    ADD_FAILURE() << "no field " << name.toStdString();
    return nullptr;
  }
  void addChange(const QString& kind) {
    QAction* a = actionIn(child<QPushButton>("addChange")->menu(), kind);
    ASSERT_NE(a, nullptr) << kind.toStdString();
    a->trigger();
  }
  void addPiece(const QString& title) {
    QAction* a = actionIn(child<QPushButton>("addPiece")->menu(), title);
    ASSERT_NE(a, nullptr) << title.toStdString();
    a->trigger();
  }
  void typeInto(QLineEdit* field, const QString& text) {
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, text);
  }
};

TEST_F(BuilderAndChanges, ANameBuiltFromPieces) {
  open({"DSC_1.jpg", "DSC_2.jpg"});
  EXPECT_EQ(chips().count(), 2) << "date and counter to start from: no camera has a tag";
  EXPECT_EQ(newNames()[QStringLiteral("DSC_1.jpg")], "DSC_1.jpg") << "the builder starts off";

  // Remove the date with its ✕, add a text piece and the frame number.
  QTest::mouseClick(chips().chip(0)->findChild<QToolButton*>("removePiece"), Qt::LeftButton);
  addPiece("Your Text…");
  auto* text = child<QLineEdit>("newPieceText");
  ASSERT_TRUE(text->isVisibleTo(window_.get()));
  QTest::keyClicks(text, "Rome");
  QTest::keyClick(text, Qt::Key_Return);
  addPiece("Frame number");
  EXPECT_TRUE(child<QWidget>("useNewName")->property("checked").toBool()) << "on with a piece";
  EXPECT_EQ(newNames(), (std::map<QString, QString>{{"DSC_1.jpg", "0001_Rome_1.jpg"},
                                                    {"DSC_2.jpg", "0002_Rome_2.jpg"}}));

  // The counter dragged to the end, then the text moved back to the front from the keyboard.
  QMimeData mime;
  mime.setData(ChipBar::kMimeType, "0");
  const QPoint end(chips().chip(2)->geometry().right() + 4, chips().height() / 2);
  QDragEnterEvent enter(end, Qt::MoveAction, &mime, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&chips(), &enter);
  QDropEvent drop(end, Qt::MoveAction, &mime, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&chips(), &drop);
  EXPECT_TRUE(drop.isAccepted());
  EXPECT_EQ(newNames()[QStringLiteral("DSC_1.jpg")], "Rome_1_0001.jpg");
  chips().chip(1)->setFocus();
  QTest::keyClick(chips().chip(1), Qt::Key_Left, Qt::ControlModifier);
  EXPECT_EQ(newNames()[QStringLiteral("DSC_1.jpg")], "1_Rome_0001.jpg");
  QApplication::processEvents();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
  EXPECT_EQ(newNames()[QStringLiteral("DSC_1.jpg")], "Rome_0001.jpg") << "the focused piece";
  QTest::mouseDClick(chips().chip(0), Qt::LeftButton);
  ASSERT_EQ(text->text(), "Rome") << "a text piece is edited in place";
  QTest::keyClicks(text, "Roma");
  QTest::keyClick(text, Qt::Key_Return);
  EXPECT_EQ(newNames()[QStringLiteral("DSC_1.jpg")], "Roma_0001.jpg");

  // Another separator joins the pieces again.
  auto* separator = child<QComboBox>("separator");
  separator->setCurrentIndex(1);
  emit separator->activated(1);
  EXPECT_EQ(newNames()[QStringLiteral("DSC_1.jpg")], "Roma-0001.jpg");
  window_->action(CommandID::separatorSpace)->trigger();
  EXPECT_EQ(newNames()[QStringLiteral("DSC_1.jpg")], "Roma 0001.jpg");
  EXPECT_EQ(separator->currentIndex(), 2);

  // Turned off from the menu, the names stay as they are.
  window_->action(CommandID::useNewName)->trigger();
  EXPECT_EQ(newNames()[QStringLiteral("DSC_1.jpg")], "DSC_1.jpg");
  EXPECT_FALSE(window_->action(CommandID::useNewName)->isChecked());
}

TEST_F(BuilderAndChanges, WritingByHandCompletesNamesAndShowsProblems) {
  open({"DSC_1.jpg"});
  QTest::mouseClick(child<QToolButton>("writeByHand"), Qt::LeftButton);
  QLineEdit* field = window_->templateField();
  ASSERT_TRUE(field->isVisibleTo(window_.get()));
  EXPECT_EQ(field->text(), "{date}_{counter}") << "the pieces as a pattern";

  typeInto(field, "x_{shu");
  QCompleter* completer = window_->nameBuilder().nameField()->completer();
  ASSERT_TRUE(completer->popup()->isVisible());
  EXPECT_EQ(completer->currentCompletion(), "shutter");
  QTest::keyClick(completer->popup(), Qt::Key_Return);
  EXPECT_EQ(field->text(), "x_{shutter}");
  EXPECT_EQ(field->cursorPosition(), field->text().size());

  typeInto(field, "{frame}_{nope");
  auto* problems = child<QLabel>("templateProblems");
  EXPECT_TRUE(problems->isVisibleTo(window_.get()));
  QTest::keyClick(field, Qt::Key_Escape);  // no completion for an unknown name
  QTest::keyClicks(field, "}");
  EXPECT_TRUE(problems->text().contains("{nope}"));

  // A pattern that is a join of pieces goes back to chips.
  typeInto(field, "{frame}_Rome");
  QTest::mouseClick(child<QToolButton>("writeByHand"), Qt::LeftButton);
  EXPECT_FALSE(field->isVisibleTo(window_.get()));
  ASSERT_EQ(chips().count(), 2);
  EXPECT_EQ(newNames()[QStringLiteral("DSC_1.jpg")], "1_Rome.jpg");
}

TEST_F(BuilderAndChanges, ChangesAreEditedReorderedTurnedOffAndScoped) {
  open({"x1.jpg", "x2.jpg", "x3.NEF"});
  EXPECT_FALSE(window_->action(CommandID::duplicateChange)->isEnabled());

  // A replacement that makes two files clash: both red, with the clash as their tooltip.
  addChange("Replace text");
  ASSERT_NE(changes().editor(), nullptr);
  typeInto(field<QLineEdit>("Text to find"), "1");
  typeInto(field<QLineEdit>("Replace with"), "2");
  EXPECT_EQ(newNames()[QStringLiteral("x1.jpg")], "x2.jpg");
  EXPECT_EQ(errors().count(QStringLiteral("x1.jpg")), 1u) << "x2.jpg is taken";
  EXPECT_FALSE(child<QPushButton>("rename")->isEnabled());

  // Turned off from the menu: the clash is gone; the command now turns it on.
  QAction* toggle = window_->action(CommandID::toggleChange);
  ASSERT_TRUE(toggle->isEnabled());
  toggle->trigger();
  EXPECT_TRUE(errors().empty());
  EXPECT_EQ(toggle->text(), "Turn On This Change");
  EXPECT_EQ(changes().list()->item(0)->checkState(), Qt::Unchecked);
  changes().list()->setFocus();
  QTest::keyClick(changes().list(), Qt::Key_Delete);
  EXPECT_EQ(changes().count(), 0);

  // Two changes whose order matters, reordered from the keyboard.
  addChange("Replace text");
  typeInto(field<QLineEdit>("Text to find"), "x");
  typeInto(field<QLineEdit>("Replace with"), "y");
  addChange("Change case");
  auto* style = field<QComboBox>("Case");
  style->setCurrentIndex(0);
  emit style->activated(0);  // UPPER CASE
  EXPECT_EQ(newNames()[QStringLiteral("x1.jpg")], "Y1.jpg");
  EXPECT_FALSE(window_->action(CommandID::moveChangeDown)->isEnabled()) << "already last";
  QTest::keyClick(changes().list(), Qt::Key_Up, Qt::ControlModifier | Qt::AltModifier);
  EXPECT_EQ(newNames()[QStringLiteral("x1.jpg")], "X1.jpg") << "upper case first";
  EXPECT_EQ(changes().selected(), 0) << "the moved change stays selected";

  // Dragged back below the replacement.
  changes().list()->model()->moveRow({}, 0, {}, 2);
  EXPECT_TRUE(waitFor([&] { return newNames()[QStringLiteral("x1.jpg")] == "Y1.jpg"; }));

  // Duplicated (Ctrl+D), then only for the RAW files.
  changes().select(0);
  QTest::keyClick(changes().list(), Qt::Key_D, Qt::ControlModifier);
  EXPECT_EQ(changes().count(), 3);
  changes().select(1);
  changes().setScope(RuleScope::raw());
  EXPECT_TRUE(changes().list()->item(1)->text().contains("RAW files"));
  changes().select(2);
  changes().setScope(RuleScope::raw());
  EXPECT_EQ(newNames(), (std::map<QString, QString>{
                            {"x1.jpg", "y1.jpg"}, {"x2.jpg", "y2.jpg"}, {"x3.NEF", "Y3.NEF"}}));

  window_->action(CommandID::turnOffAllChanges)->trigger();
  EXPECT_EQ(newNames()[QStringLiteral("x3.NEF")], "x3.NEF");
  window_->action(CommandID::deleteAllChanges)->trigger();
  EXPECT_EQ(changes().count(), 0);
  EXPECT_FALSE(window_->action(CommandID::deleteAllChanges)->isEnabled());
}

TEST_F(BuilderAndChanges, RegularExpressionShowsItsProblem) {
  open({"IMG_7.jpg"});
  addChange("Regular expression");
  auto* problem = changes().editor()->findChild<QLabel*>("regexProblem");
  typeInto(field<QLineEdit>("Regular expression"), "IMG_(\\d+");
  EXPECT_TRUE(problem->isVisibleTo(window_.get()));
  QTest::keyClicks(field<QLineEdit>("Regular expression"), ")");
  EXPECT_FALSE(problem->isVisibleTo(window_.get()));
  typeInto(field<QLineEdit>("Replace with"), "P$1");
  EXPECT_EQ(newNames()[QStringLiteral("IMG_7.jpg")], "P7.jpg");
}

TEST_F(BuilderAndChanges, APresetIsSavedMarkedAsModifiedAndLoaded) {
  open({"a.jpg"});
  changes().setNameAsker([](const QString&) { return QStringLiteral("Wedding"); });
  addChange("Add text");
  typeInto(field<QLineEdit>("Text to add"), "_w");
  EXPECT_EQ(newNames()[QStringLiteral("a.jpg")], "a_w.jpg");

  window_->action(CommandID::savePreset)->trigger();  // no preset yet: asks for a name
  EXPECT_TRUE(fs::exists(app_->presets().directory() / "Wedding.tessanepreset"));
  QPushButton* presets = changes().presetButton();
  EXPECT_EQ(presets->text(), "Wedding");

  typeInto(field<QLineEdit>("Text to add"), "_x");
  EXPECT_EQ(presets->text(), "Wedding (modified)");
  typeInto(field<QLineEdit>("Text to add"), "_w");
  EXPECT_EQ(presets->text(), "Wedding") << "back as saved";
  typeInto(field<QLineEdit>("Text to add"), "_x");
  QTest::keyClick(changes().list(), Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(presets->text(), "Wedding");

  window_->action(CommandID::deleteAllChanges)->trigger();
  EXPECT_EQ(newNames()[QStringLiteral("a.jpg")], "a.jpg");
  EXPECT_EQ(presets->text(), "Wedding (modified)");
  presets->menu()->aboutToShow();
  QAction* load = actionIn(presets->menu(), "Wedding");
  ASSERT_NE(load, nullptr);
  load->trigger();
  EXPECT_EQ(newNames()[QStringLiteral("a.jpg")], "a_x.jpg");
  EXPECT_EQ(changes().count(), 1);
  EXPECT_EQ(presets->text(), "Wedding");
}

// Each editor's own choices (what to remove, what to clean up, what to do with the extension,
// where to add text) make rules that are still shown under the editor's kind, each different.
TEST(ChangeEditorTest, ChoicesKeepTheKindAndMakeDistinctRules) {
  testing::offscreenApplication();
  const std::pair<RuleKind, QString> choosers[] = {
      {RuleKind::remove, "What to remove"},
      {RuleKind::clean, "What to clean up"},
      {RuleKind::fileExtension, "What to do with the extension"},
      {RuleKind::addText, "Where to add it"},
      {RuleKind::counter, "Start again"},
  };
  for (const auto& [kind, chooser] : choosers) {
    ChangeEditor editor(*newRule(kind));
    std::set<std::string> made;
    for (int i = 0;; ++i) {
      QComboBox* box = nullptr;
      for (QComboBox* b : editor.findChildren<QComboBox*>())
        if (b->accessibleName() == chooser) box = b;
      ASSERT_NE(box, nullptr) << chooser.toStdString();
      if (i >= box->count()) break;
      box->setCurrentIndex(i);
      emit box->activated(i);
      EXPECT_EQ(kindOf(editor.rule()), kind) << chooser.toStdString() << " " << i;
      made.insert(toJson(editor.rule().action).dump());
    }
    EXPECT_GE(made.size(), 2u) << chooser.toStdString();
  }

  // A rule no kind shows is only described: nothing in it can be edited.
  ChangeEditor advanced(testing::operationRule(op::Truncate{8}));
  EXPECT_TRUE(advanced.findChildren<QLineEdit*>().isEmpty());
  EXPECT_TRUE(advanced.findChildren<QComboBox*>().isEmpty());
}

}  // namespace
}  // namespace tessane
