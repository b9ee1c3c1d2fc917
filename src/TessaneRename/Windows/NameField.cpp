#include "TessaneRename/Windows/NameField.h"

#include "TessaneRename/Messages.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "RenameEngine/OperationIssue.h"
#include "RenameEngine/Template.h"
#include "TessaneRename/FolderModel.h"
#include "TessaneRename/NameBuilder.h"

namespace tessane {

NameField::NameField(FolderModel& model, AppContext& app, QWidget* parent)
    : QWidget(parent), model_(model), app_(app) {
  edit_ = new QLineEdit(this);
  edit_->setObjectName("templateField");
  edit_->setPlaceholderText(tr("{date:yyyy-MM-dd}_{body}_{counter}"));
  edit_->setAccessibleName(tr("Name template"));
  edit_->setToolTip(
      tr("Write the new name by hand: text and variables in braces, such as "
         "{date}, {body}, {original} and {counter}"));
  edit_->setClearButtonEnabled(true);
  edit_->setAcceptDrops(false);  // files dropped here open in the window, not as text

  problems_ = new QLabel(this);
  problems_->setObjectName("templateProblems");
  problems_->setWordWrap(true);
  problems_->setStyleSheet("color: #c62828;");
  problems_->hide();

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(4);
  layout->addWidget(edit_);
  layout->addWidget(problems_);

  // The completer is driven by hand: it completes the name after the "{" at the cursor, not the
  // whole text.
  completer_ = new QCompleter(variableNames(), this);
  completer_->setCaseSensitivity(Qt::CaseInsensitive);
  completer_->setCompletionMode(QCompleter::PopupCompletion);
  completer_->setWidget(edit_);
  completer_->popup()->setAccessibleName(tr("Variables"));
  connect(completer_, qOverload<const QString&>(&QCompleter::activated), this,
          &NameField::complete);

  connect(edit_, &QLineEdit::textEdited, this, &NameField::edited);
  connect(edit_, &QLineEdit::textEdited, this, &NameField::offerCompletions);
  connect(&model_, &FolderModel::rulesChanged, this, &NameField::showRules);
  showRules();
}

QStringList NameField::problemsOf(const QString& templateText) {
  const Template parsed = Template::parse(templateText.toStdString());
  QStringList out;
  if (!parsed.isValid)
    out << QString::fromStdString(Messages::of(OperationIssue::invalidTemplate()));
  for (const TemplatePart& part : parsed.parts) {
    if (part.kind != TemplatePart::Kind::variable || Template::isCounterName(part.text)) continue;
    if (templateVariableNamed(part.text)) continue;
    const QString message =
        QString::fromStdString(Messages::of(OperationIssue::unknownVariable(part.text)));
    if (!out.contains(message)) out << message;
  }
  return out;
}

void NameField::edited(const QString& text) {
  showProblems(text);
  const std::string separator = app_.preferences().nameSeparator();
  NameBuilder builder = NameBuilder::of(model_.rules(), separator);
  builder.way = NameBuilder::Way::byHand;
  builder.pattern = text.toStdString();
  builder.usesNewName = !text.isEmpty();
  RuleStack rules = model_.rules();
  builder.applyTo(rules, separator, app_.preferences().nameCounter());
  model_.setRules(std::move(rules));
}

// The rules changed elsewhere (a resumed session, a preset): the field shows their template,
// unless it is the one being typed.
void NameField::showRules() {
  const std::string separator = app_.preferences().nameSeparator();
  const NameBuilder builder = NameBuilder::of(model_.rules(), separator);
  // Shown even while "Use the new name" is off: typing turns it on.
  const QString shown = QString::fromStdString(
      builder.way == NameBuilder::Way::byHand ? builder.pattern : builder.templateText(separator));
  if (shown == edit_->text()) return;
  edit_->setText(shown);
  showProblems(shown);
}

void NameField::offerCompletions() {
  const std::optional<TypedVariable> typed =
      variableBeingTyped(edit_->text(), edit_->cursorPosition());
  if (!typed) {
    completer_->popup()->hide();
    return;
  }
  completer_->setCompletionPrefix(typed->prefix);
  if (completer_->completionCount() == 0 ||
      (completer_->completionCount() == 1 &&
       completer_->currentCompletion().compare(typed->prefix, Qt::CaseInsensitive) == 0)) {
    completer_->popup()->hide();
    return;
  }
  completer_->complete();
  // The first name is chosen already: Return takes it, the arrow keys choose another.
  completer_->popup()->setCurrentIndex(completer_->completionModel()->index(0, 0));
}

void NameField::complete(const QString& name) {
  const QString text = edit_->text();
  const std::optional<TypedVariable> typed = variableBeingTyped(text, edit_->cursorPosition());
  if (!typed) return;
  const qsizetype end = edit_->cursorPosition();
  const bool closed = end < text.size() && text[end] == '}';
  const QString inserted = name + (closed ? QString() : QStringLiteral("}"));
  const QString completed = text.left(typed->start) + inserted + text.mid(end);
  edit_->setText(completed);
  edit_->setCursorPosition(static_cast<int>(typed->start + inserted.size() + (closed ? 1 : 0)));
  edited(completed);
}

void NameField::showProblems(const QString& text) {
  const QStringList problems = problemsOf(text);
  problems_->setText(problems.join('\n'));
  problems_->setVisible(!problems.isEmpty());
}

}  // namespace tessane
