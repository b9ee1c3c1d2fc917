// The problem report: the user's words, "Include details" (what the window showed, the rules being
// built, the last actions and the crash text, if the last run ended suddenly), the whole text as
// it will be sent, shown and kept up to date before anything leaves, and Send (through the mail
// application), Save and Copy. Nothing is sent without the user pressing Send; a build without a
// report address has no Send: the report is saved or copied, for the user to pass on.
#pragma once

#include <QWidget>

class QCheckBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace tessane {

class BetaReporter;

class ReportWindow : public QWidget {
  Q_OBJECT

 public:
  explicit ReportWindow(BetaReporter& reporter, QWidget* parent = nullptr);

  QPlainTextEdit* comment() const { return comment_; }
  QCheckBox* includesDetails() const { return details_; }
  QPlainTextEdit* reportText() const { return text_; }
  QLabel* status() const { return status_; }
  // Present only when the reporter has an address.
  QPushButton* sendButton() const { return send_; }

  // Shows the report again (after the window's context changed).
  void refresh();
  void send();
  // Writes the report to `file`; with an empty name, asks where.
  void save(const QString& file = {});
  // Puts the whole report on the clipboard.
  void copy();

 private:
  BetaReporter& reporter_;
  QPlainTextEdit* comment_ = nullptr;
  QCheckBox* details_ = nullptr;
  QPlainTextEdit* text_ = nullptr;
  QLabel* status_ = nullptr;
  QPushButton* send_ = nullptr;
};

}  // namespace tessane
