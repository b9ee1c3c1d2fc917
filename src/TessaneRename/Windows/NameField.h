// "Write by hand": the name template typed as text. Each edit becomes the format rule at the top
// of the window's rules (through NameBuilder); the template's own problems (a "{" never closed, a
// variable the language doesn't know) show under the field as they are typed, and a variable's
// name is completed from the names the language knows once its "{" is typed.
#pragma once

#include <QStringList>
#include <QWidget>

class QCompleter;
class QLabel;
class QLineEdit;

namespace tessane {

class FolderModel;
class AppContext;

class NameField : public QWidget {
  Q_OBJECT

 public:
  NameField(FolderModel& model, AppContext& app, QWidget* parent = nullptr);

  QLineEdit* lineEdit() const { return edit_; }
  QCompleter* completer() const { return completer_; }

  // The problems of a template as the user reads them; empty when there is none.
  static QStringList problemsOf(const QString& templateText);

 private:
  void edited(const QString& text);
  void showRules();
  void showProblems(const QString& text);
  void offerCompletions();
  void complete(const QString& name);

  FolderModel& model_;
  AppContext& app_;
  QLineEdit* edit_;
  QLabel* problems_;
  QCompleter* completer_;
};

}  // namespace tessane
