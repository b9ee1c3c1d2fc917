#include "TessaneRename/Windows/ReportWindow.h"

#include <QCheckBox>
#include <QClipboard>
#include <QFileDialog>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "TessaneRename/BetaReporter.h"
#include "TessaneRename/Windows/Appearance.h"

namespace tessane {

ReportWindow::ReportWindow(BetaReporter& reporter, QWidget* parent)
    : QWidget(parent, Qt::Window), reporter_(reporter) {
  setObjectName("reportWindow");
  setWindowTitle(tr("Report a Problem"));
  auto* intro = new QLabel(tr("Tessane Rename is in beta: tell what went wrong"));
  makeBold(intro);
  intro->setWordWrap(true);

  auto* commentLabel = new QLabel(tr("&What happened?"));
  comment_ = new QPlainTextEdit;
  comment_->setObjectName("reportComment");
  comment_->setAccessibleName(tr("What happened"));
  comment_->setPlaceholderText(
      tr("What were you doing, what did you expect, and what happened instead?"));
  comment_->setTabChangesFocus(true);
  comment_->setMaximumHeight(comment_->fontMetrics().lineSpacing() * 6 + 16);
  commentLabel->setBuddy(comment_);
  connect(comment_, &QPlainTextEdit::textChanged, this, &ReportWindow::refresh);

  details_ = new QCheckBox(
      tr("&Include details: the error on screen, the folders, the rules, the last actions and "
         "what a sudden quit left"));
  details_->setObjectName("includeDetails");
  details_->setAccessibleName(tr("Include details"));
  details_->setChecked(true);
  connect(details_, &QCheckBox::toggled, this, &ReportWindow::refresh);

  auto* textLabel =
      new QLabel(reporter_.sends() ? tr("The report, as it will be sent:")
                                   : tr("The report, as it will be saved or copied:"));
  text_ = new QPlainTextEdit;
  text_->setObjectName("reportText");
  text_->setAccessibleName(reporter_.sends() ? tr("The report, as it will be sent")
                                             : tr("The report, as it will be saved or copied"));
  text_->setReadOnly(true);
  text_->setTabChangesFocus(true);
  text_->setLineWrapMode(QPlainTextEdit::WidgetWidth);
  text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  textLabel->setBuddy(text_);

  status_ = new QLabel;
  status_->setObjectName("reportStatus");
  status_->setWordWrap(true);
  connect(&reporter_, &BetaReporter::statusMessageChanged, this,
          [this] { status_->setText(reporter_.statusMessage()); });

  auto* copyButton = new QPushButton(tr("&Copy"));
  copyButton->setObjectName("copyReport");
  copyButton->setToolTip(tr("Puts the whole report on the clipboard."));
  connect(copyButton, &QPushButton::clicked, this, &ReportWindow::copy);
  auto* saveButton = new QPushButton(tr("&Save…"));
  saveButton->setObjectName("saveReport");
  connect(saveButton, &QPushButton::clicked, this, [this] { save(); });
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(status_, 1);
  buttons->addWidget(copyButton);
  buttons->addWidget(saveButton);
  if (reporter_.sends()) {
    send_ = new QPushButton(tr("Se&nd"));
    send_->setObjectName("sendReport");
    send_->setDefault(true);
    send_->setToolTip(
        tr("Opens your mail app with the report attached; nothing leaves "
           "without you."));
    connect(send_, &QPushButton::clicked, this, &ReportWindow::send);
    buttons->addWidget(send_);
  } else {
    saveButton->setDefault(true);
  }

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(14, 14, 14, 12);
  layout->setSpacing(8);
  layout->addWidget(intro);
  layout->addWidget(commentLabel);
  layout->addWidget(comment_);
  layout->addWidget(details_);
  layout->addWidget(textLabel);
  layout->addWidget(text_, 1);
  layout->addLayout(buttons);
  resize(720, 620);
  refresh();
}

void ReportWindow::refresh() {
  text_->setPlainText(reporter_.report(comment_->toPlainText(), details_->isChecked()).text());
}

void ReportWindow::send() {
  reporter_.send(comment_->toPlainText(), details_->isChecked());
}

void ReportWindow::copy() {
  QGuiApplication::clipboard()->setText(text_->toPlainText());
  status_->setText(tr("Report copied"));
}

void ReportWindow::save(const QString& file) {
  QString target = file;
  if (target.isEmpty()) {
    target = QFileDialog::getSaveFileName(this, tr("Save the Report"),
                                          QString::fromUtf8(BetaReporter::kSaveName),
                                          tr("Plain text (*.txt)"));
  }
  if (target.isEmpty()) return;
  const bool saved = reporter_.save(std::filesystem::path(target.toStdString()),
                                    comment_->toPlainText(), details_->isChecked());
  status_->setText(saved ? tr("Report saved") : tr("Couldn’t save the report."));
}

}  // namespace tessane
