// The name builder at the top of the window: the pieces of the new name as chips (dragged into
// order with the mouse, moved with Ctrl+Left/Right and removed with Delete from the keyboard), a
// menu that adds a piece by group, the separator between pieces, "Start from the Original Name",
// "Write by hand" (the pattern field in place of the chips) and "Use the new name".
//
// It keeps the builder being edited (NameBuilder) and hands every change to the folder model as
// the stack's top format rule; a stack changed elsewhere (a preset, a resumed session) is shown
// again. The pieces and the template they make are the model's (NameBuilder, FormatToken).
#pragma once

#include <QWidget>

#include "TessaneRename/NameBuilder.h"

class QAction;
class QCheckBox;
class QComboBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;
class QToolButton;

namespace tessane {

class AppContext;
class ChipBar;
class FolderModel;
class NameField;

class NameBuilderPanel : public QWidget {
  Q_OBJECT

 public:
  NameBuilderPanel(FolderModel& model, AppContext& app, QWidget* parent = nullptr);

  const NameBuilder& builder() const { return builder_; }
  NameField* nameField() const { return field_; }
  bool writesByHand() const;

  // The gestures, also reached from the Changes menu.
  void addPiece(const FormatToken& piece);
  void removePiece(int index);
  // A text piece is edited in the field that adds one; other pieces are chosen from the menu.
  void editPiece(int index);
  void movePiece(int from, int to);
  void setStartsFromOriginal(bool on);
  void setWritesByHand(bool on);
  void setUsesNewName(bool on);
  // The separator setting changed (from the menu or this panel): the pieces are joined again.
  void separatorChanged(const std::string& before);

 signals:
  // The builder's state changed (for the menus' ticks).
  void changed();

 private:
  QAction* makeAddMenu();
  void makeNewTextField(QAction* text);
  QHBoxLayout* makeWays();
  void apply();
  void showRules();
  void showBuilder();
  void chooseSeparator(int index);
  std::string separator() const;

  FolderModel& model_;
  AppContext& app_;
  NameBuilder builder_;
  bool byHand_ = false;  // the field is shown though the pattern is still a join of pieces
  bool applying_ = false;
  int editing_ = -1;  // the text piece the text field edits, else it adds one

  QStackedWidget* stack_;
  ChipBar* chips_;
  NameField* field_;
  QPushButton* add_;
  QLineEdit* newText_;
  QComboBox* separator_;
  QToolButton* fromOriginal_;
  QToolButton* byHandButton_;
  QCheckBox* usesNewName_;
};

}  // namespace tessane
