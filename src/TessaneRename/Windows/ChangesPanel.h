// The changes below the name builder, applied from top to bottom: the list (each change's kind,
// what it does and the files it applies to, with a tick that turns it on or off; dragged into
// order, or moved with Alt+Ctrl+Up/Down), a menu that adds a change by kind in its three groups,
// the selected change's editor and its scope, and the preset menu (load, save, save as, with a
// mark when the rules differ from the preset in use).
//
// Every gesture is one ChangeList call on a copy of the folder model's rules, handed back to the
// model; the panel shows the model's rules again whenever they change.
#pragma once

#include <QWidget>

#include <functional>
#include <optional>

#include "RenameEngine/Uuid.h"
#include "TessaneRename/RuleKind.h"
#include "TessaneRename/RuleScope.h"

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenu;
class QPushButton;
class QStackedWidget;
class QToolButton;

namespace tessane {

class AppContext;
class ChangeEditor;
class FolderModel;
class PresetLibrary;
struct RuleStack;

class ChangesPanel : public QWidget {
  Q_OBJECT

 public:
  // Asks the user for a preset's name (Save Preset As…); an empty answer cancels. Tests set their
  // own instead of the dialog.
  using NameAsker = std::function<QString(const QString& suggested)>;

  ChangesPanel(FolderModel& model, AppContext& app, PresetLibrary& presets,
               QWidget* parent = nullptr);

  void setNameAsker(NameAsker asker) { askName_ = std::move(asker); }

  int count() const;
  std::optional<int> selected() const;
  void select(int index);
  bool selectedIsOn() const;
  QListWidget* list() const { return list_; }
  ChangeEditor* editor() const { return editor_; }
  QPushButton* presetButton() const { return presetButton_; }

  // The gestures, also reached from the Changes and File menus.
  void add(RuleKind kind);
  void toggleSelected();
  void duplicateSelected();
  void moveSelected(int by);
  void deleteSelected();
  void setAllEnabled(bool on);
  void deleteAll();
  void setScope(const RuleScope& scope);
  void loadPreset(int index);
  void savePreset();
  void savePresetAs();

 signals:
  // The changes or the selection changed (for the menus' enabled states).
  void changed();

 private:
  QHBoxLayout* makeHeader();
  void makeList();
  void makeListBox();
  void makeEditorArea();
  void edit(const std::function<std::optional<int>(RuleStack&)>& change);
  void showRules();
  void showEditor();
  void showScope();
  void showPresets();
  void fillPresetMenu();
  void fillScopeMenu();
  void rowsDragged(int from, int to);

  FolderModel& model_;
  AppContext& app_;
  PresetLibrary& presets_;
  NameAsker askName_;
  std::optional<Uuid> selectedID_;
  bool syncing_ = false;

  QListWidget* list_;
  QWidget* listBox_;
  QStackedWidget* editorArea_;
  QLabel* emptyHint_;
  QWidget* editorPage_;
  ChangeEditor* editor_ = nullptr;
  QPushButton* scopeButton_;
  QMenu* scopeMenu_;
  QLineEdit* nameContains_;
  QPushButton* presetButton_;
  QMenu* presetMenu_;
  QToolButton* upButton_;
  QToolButton* downButton_;
  QToolButton* duplicateButton_;
  QToolButton* deleteButton_;
};

}  // namespace tessane
