#include "TessaneRename/Windows/ChangeEditor.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QVBoxLayout>

#include <functional>
#include <type_traits>

#include "TessaneRename/ChangeList.h"
#include "TessaneRename/RuleKind.h"
#include "TessaneRename/Windows/NameField.h"

namespace tessane {
namespace {

QString q(const std::string& s) {
  return QString::fromStdString(s);
}

QLineEdit* textField(const std::string& value, const QString& name,
                     std::function<void(std::string)> edited) {
  auto* field = new QLineEdit(q(value));
  field->setAccessibleName(name);
  field->setObjectName(name);
  field->setClearButtonEnabled(true);
  QObject::connect(field, &QLineEdit::textEdited, field,
                   [edited](const QString& s) { edited(s.toStdString()); });
  return field;
}

QComboBox* choice(const QStringList& items, int current, const QString& name,
                  std::function<void(int)> chosen) {
  auto* box = new QComboBox;
  box->addItems(items);
  box->setCurrentIndex(current);
  box->setAccessibleName(name);
  QObject::connect(box, &QComboBox::activated, box, chosen);
  return box;
}

QSpinBox* number(std::int64_t value, int min, int max, const QString& name,
                 std::function<void(int)> edited) {
  auto* spin = new QSpinBox;
  spin->setRange(min, max);
  spin->setValue(static_cast<int>(value));
  spin->setAccessibleName(name);
  QObject::connect(spin, &QSpinBox::valueChanged, spin, edited);
  return spin;
}

QCheckBox* toggle(const QString& title, bool on, std::function<void(bool)> edited) {
  auto* box = new QCheckBox(title);
  box->setChecked(on);
  QObject::connect(box, &QCheckBox::toggled, box, edited);
  return box;
}

QStringList occurrences() {
  return {ChangeEditor::tr("First"), ChangeEditor::tr("Last"), ChangeEditor::tr("Every")};
}

QStringList caseStyles() {
  return {ChangeEditor::tr("UPPER CASE"), ChangeEditor::tr("lower case"),
          ChangeEditor::tr("Title Case")};
}

// A text looked for: the text, whether its case matters, and which of its occurrences counts.
QWidget* anchorRow(const Anchor& anchor, const QString& name, bool withOccurrence,
                   std::function<void(Anchor)> edited) {
  auto* row = new QWidget;
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  // The fields share the anchor, so that each edit carries the others' values.
  auto shared = std::make_shared<Anchor>(anchor);
  layout->addWidget(textField(anchor.text, name,
                              [shared, edited](std::string s) {
                                shared->text = std::move(s);
                                edited(*shared);
                              }),
                    1);
  layout->addWidget(
      toggle(ChangeEditor::tr("Match case"), anchor.caseSensitive, [shared, edited](bool on) {
        shared->caseSensitive = on;
        edited(*shared);
      }));
  if (withOccurrence) {
    layout->addWidget(choice(occurrences(), static_cast<int>(anchor.occurrence),
                             ChangeEditor::tr("Which one"), [shared, edited](int i) {
                               shared->occurrence = static_cast<Occurrence>(i);
                               edited(*shared);
                             }));
  }
  return row;
}

// A block: its place, counted from 1 (negative from the end).
QSpinBox* blockField(const BlockRef& ref, const QString& name,
                     std::function<void(BlockRef)> edited) {
  std::int64_t shown = 1;
  if (const auto* i = std::get_if<BlockRef::Index>(&ref.ref))
    shown = i->value >= 0 ? i->value + 1 : i->value;
  auto* spin = number(shown, -99, 99, name, [edited](int v) {
    if (v == 0) return;
    edited(BlockRef::index(v > 0 ? v - 1 : v));
  });
  spin->setToolTip(
      ChangeEditor::tr("Blocks are the parts of the name between separators; "
                       "-1 is the last"));
  return spin;
}

// The operation as the editor holds it now (the fields' lambdas outlive the values they were
// built from).
template <typename T>
T currentOperation(const Rule& rule) {
  return std::get<T>(std::get<RuleAction::Operation>(rule.action.value).operation.value);
}

}  // namespace

ChangeEditor::ChangeEditor(const Rule& rule, QWidget* parent) : QWidget(parent), rule_(rule) {
  setObjectName("changeEditor");
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  build();
}

void ChangeEditor::build() {
  if (form_ != nullptr) form_->deleteLater();
  form_ = new QWidget(this);
  layout()->addWidget(form_);
  auto* form = new QFormLayout(form_);
  form->setContentsMargins(0, 0, 0, 0);
  form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  const RuleKind kind = kindOf(rule_);
  auto* heading = new QLabel(title(kind));
  heading->setStyleSheet("font-weight: 600;");
  form->addRow(heading);
  if (const QString explained = explanation(kind); !explained.isEmpty()) {
    auto* note = new QLabel(explained);
    note->setWordWrap(true);
    form->addRow(note);
  }
  const auto& action = rule_.action.value;
  if (kind == RuleKind::advanced) return;
  if (std::holds_alternative<RuleAction::Format>(action)) return buildFormat(form);
  if (std::holds_alternative<RuleAction::Numbering>(action)) return buildCounter(form);
  buildOperation(form);
}

void ChangeEditor::changed(RenameOperation::Value value, bool rebuild) {
  rule_.action = {RuleAction::Operation{RenameOperation{std::move(value)}}};
  if (rebuild) build();
  emit edited(rule_);
}

void ChangeEditor::buildFormat(QFormLayout* form) {
  auto& format = std::get<RuleAction::Format>(rule_.action.value).format;
  auto* problems = new QLabel;
  problems->setObjectName("formatProblems");
  problems->setWordWrap(true);
  problems->setStyleSheet("color: #c62828;");
  const auto show = [problems](const std::string& text) {
    const QStringList list = NameField::problemsOf(q(text));
    problems->setText(list.join('\n'));
    problems->setVisible(!list.isEmpty());
  };
  form->addRow(
      tr("Pattern:"), textField(format.templateText, tr("Pattern"), [this, show](std::string s) {
        show(s);
        std::get<RuleAction::Format>(rule_.action.value).format.templateText = std::move(s);
        emit edited(rule_);
      }));
  form->addRow(problems);
  show(format.templateText);
}

void ChangeEditor::buildCounter(QFormLayout* form) {
  const Counter& shown = std::get<RuleAction::Numbering>(rule_.action.value).counter;
  const auto edit = [this](std::function<void(Counter&)> f) {
    f(std::get<RuleAction::Numbering>(rule_.action.value).counter);
    emit edited(rule_);
  };
  form->addRow(tr("Start at:"), number(shown.start, 0, 999999, tr("Start at"),
                                       [edit](int v) { edit([v](Counter& c) { c.start = v; }); }));
  form->addRow(tr("Step:"), number(shown.step, 1, 1000, tr("Step"),
                                   [edit](int v) { edit([v](Counter& c) { c.step = v; }); }));
  form->addRow(tr("Digits:"), number(shown.padding, 1, Counter::kMaxPadding, tr("Digits"),
                                     [edit](int v) { edit([v](Counter& c) { c.padding = v; }); }));
  form->addRow(tr("Start again:"),
               choice({tr("Never"), tr("In each folder"), tr("On each day")},
                      static_cast<int>(shown.reset), tr("Start again"), [edit](int i) {
                        edit([i](Counter& c) { c.reset = static_cast<CounterReset>(i); });
                      }));
  form->addRow(tr("Put it:"), choice({tr("At the end"), tr("At the start")},
                                     shown.position.kind == InsertPosition::Kind::start ? 1 : 0,
                                     tr("Put it"), [edit](int i) {
                                       edit([i](Counter& c) {
                                         c.position = i == 1 ? InsertPosition::start()
                                                             : InsertPosition::end();
                                       });
                                     }));
}

void ChangeEditor::buildInsert(QFormLayout* form, const op::Insert& o) {
  const auto edit = [this](std::function<void(op::Insert&)> f, bool rebuild = false) {
    op::Insert now = currentOperation<op::Insert>(rule_);
    f(now);
    changed(std::move(now), rebuild);
  };
  form->addRow(tr("Text:"), textField(o.text, tr("Text to add"), [edit](std::string s) {
                 edit([&s](op::Insert& i) { i.text = std::move(s); });
               }));
  // Where: the start, the end, after a number of characters, before or after a text.
  const InsertPosition::Kind k = o.at.kind;
  const int where = k == InsertPosition::Kind::start   ? 0
                    : k == InsertPosition::Kind::end   ? 1
                    : k == InsertPosition::Kind::index ? 2
                    : k == InsertPosition::Kind::after ? 4
                                                       : 3;
  form->addRow(tr("Where:"),
               choice({tr("At the start"), tr("At the end"), tr("After some characters"),
                       tr("Before a text"), tr("After a text")},
                      where, tr("Where to add it"), [edit](int n) {
                        const InsertPosition at[] = {InsertPosition::start(), InsertPosition::end(),
                                                     InsertPosition::atIndex(1),
                                                     InsertPosition::before(Anchor{}),
                                                     InsertPosition::after(Anchor{})};
                        edit([&](op::Insert& i) { i.at = at[n]; }, true);
                      }));
  if (k == InsertPosition::Kind::index) {
    form->addRow(tr("Characters:"),
                 number(o.at.offset, 0, 255, tr("Characters before it"), [edit](int v) {
                   edit([v](op::Insert& i) { i.at = InsertPosition::atIndex(v); });
                 }));
  } else if (k == InsertPosition::Kind::before || k == InsertPosition::Kind::after) {
    form->addRow(tr("The text:"),
                 anchorRow(o.at.anchor, tr("Text to find"), true, [edit](Anchor a) {
                   edit([&a](op::Insert& i) { i.at.anchor = std::move(a); });
                 }));
  }
}

void ChangeEditor::buildReplace(QFormLayout* form, const op::Replace& o) {
  auto shared = std::make_shared<op::Replace>(o);
  form->addRow(tr("Find:"), anchorRow(o.anchor, tr("Text to find"), true, [this, shared](Anchor a) {
                 shared->anchor = std::move(a);
                 changed(*shared);
               }));
  form->addRow(tr("Replace with:"),
               textField(o.with, tr("Replace with"), [this, shared](std::string s) {
                 shared->with = std::move(s);
                 changed(*shared);
               }));
}

template <typename T>
void ChangeEditor::buildRemoval(QFormLayout* form, const T& o) {
  const int what = std::is_same_v<T, op::DeleteText>         ? 0
                   : std::is_same_v<T, op::DeleteBlock>      ? 1
                   : std::is_same_v<T, op::DeleteCharacters> ? 2
                   : std::is_same_v<T, op::DeleteBefore>     ? 3
                   : std::is_same_v<T, op::DeleteAfter>      ? 4
                                                             : 5;
  form->addRow(
      tr("Remove:"),
      choice({tr("A text"), tr("A block"), tr("Some characters"), tr("Everything before a text"),
              tr("Everything after a text"), tr("Everything between two texts")},
             what, tr("What to remove"), [this](int i) {
               const RenameOperation::Value made[] = {
                   op::DeleteText{},           op::DeleteBlock{BlockRef::index(0)},
                   op::DeleteCharacters{0, 1}, op::DeleteBefore{},
                   op::DeleteAfter{},          op::DeleteBetween{}};
               changed(made[i], true);
             }));
  if constexpr (std::is_same_v<T, op::DeleteText>) {
    form->addRow(tr("Text:"), anchorRow(o.anchor, tr("Text to remove"), true, [this](Anchor a) {
                   changed(op::DeleteText{std::move(a)});
                 }));
  } else if constexpr (std::is_same_v<T, op::DeleteBlock>) {
    form->addRow(tr("Block:"), blockField(o.block, tr("Block to remove"), [this](BlockRef r) {
                   changed(op::DeleteBlock{std::move(r)});
                 }));
  } else if constexpr (std::is_same_v<T, op::DeleteCharacters>) {
    buildRemoveCharacters(form, o);
  } else if constexpr (std::is_same_v<T, op::DeleteBetween>) {
    buildRemoveBetween(form, o);
  } else {
    auto shared = std::make_shared<T>(o);
    form->addRow(tr("Text:"),
                 anchorRow(o.anchor, tr("Text to find"), true, [this, shared](Anchor a) {
                   shared->anchor = std::move(a);
                   changed(*shared);
                 }));
    form->addRow(toggle(tr("Remove the text too"), o.inclusive, [this, shared](bool on) {
      shared->inclusive = on;
      changed(*shared);
    }));
  }
}

void ChangeEditor::buildRemoveCharacters(QFormLayout* form, const op::DeleteCharacters& o) {
  auto shared = std::make_shared<op::DeleteCharacters>(o);
  form->addRow(tr("From character:"),
               number(o.from + 1, 1, 255, tr("From character"), [this, shared](int v) {
                 shared->from = v - 1;
                 changed(*shared);
               }));
  form->addRow(tr("How many:"),
               number(o.count, 1, 255, tr("How many characters"), [this, shared](int v) {
                 shared->count = v;
                 changed(*shared);
               }));
}

void ChangeEditor::buildRemoveBetween(QFormLayout* form, const op::DeleteBetween& o) {
  auto shared = std::make_shared<op::DeleteBetween>(o);
  form->addRow(tr("From:"),
               anchorRow(o.start, tr("Text it starts at"), false, [this, shared](Anchor a) {
                 shared->start = std::move(a);
                 changed(*shared);
               }));
  form->addRow(tr("To:"), anchorRow(o.end, tr("Text it ends at"), false, [this, shared](Anchor a) {
                 shared->end = std::move(a);
                 changed(*shared);
               }));
  form->addRow(toggle(tr("Remove the two texts too"), o.inclusive, [this, shared](bool on) {
    shared->inclusive = on;
    changed(*shared);
  }));
}

void ChangeEditor::buildMoveBlock(QFormLayout* form, const op::MoveBlock& o) {
  auto shared = std::make_shared<op::MoveBlock>(o);
  form->addRow(tr("Block:"), blockField(o.block, tr("Block to move"), [this, shared](BlockRef r) {
                 shared->block = std::move(r);
                 changed(*shared);
               }));
  form->addRow(tr("To place:"),
               number(o.toIndex + 1, 1, 99, tr("Place to move it to"), [this, shared](int v) {
                 shared->toIndex = v - 1;
                 changed(*shared);
               }));
}

void ChangeEditor::buildReplaceRegex(QFormLayout* form, const op::ReplaceRegex& o) {
  auto shared = std::make_shared<op::ReplaceRegex>(o);
  auto* problem = new QLabel;
  problem->setObjectName("regexProblem");
  problem->setWordWrap(true);
  problem->setStyleSheet("color: #c62828;");
  const auto show = [problem](const std::string& pattern) {
    const QString text = ChangeList::regexProblem(pattern);
    problem->setText(text);
    problem->setVisible(!text.isEmpty());
  };
  auto* pattern =
      textField(o.pattern, tr("Regular expression"), [this, shared, show](std::string s) {
        show(s);
        shared->pattern = std::move(s);
        changed(*shared);
      });
  pattern->setPlaceholderText(tr("IMG_(\\d+)"));
  form->addRow(tr("Find:"), pattern);
  form->addRow(problem);
  auto* with = textField(o.replacement, tr("Replace with"), [this, shared](std::string s) {
    shared->replacement = std::move(s);
    changed(*shared);
  });
  with->setPlaceholderText(tr("$1 is the first group"));
  form->addRow(tr("Replace with:"), with);
  auto* options = new QWidget;
  auto* row = new QHBoxLayout(options);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(choice(occurrences(), static_cast<int>(o.occurrence), tr("Which matches"),
                        [this, shared](int i) {
                          shared->occurrence = static_cast<Occurrence>(i);
                          changed(*shared);
                        }));
  row->addWidget(toggle(tr("Match case"), o.caseSensitive, [this, shared](bool on) {
    shared->caseSensitive = on;
    changed(*shared);
  }));
  row->addStretch(1);
  form->addRow(tr("Matches:"), options);
  show(o.pattern);
}

template <typename T>
void ChangeEditor::buildCleanUp(QFormLayout* form, const T& o) {
  const RenameOperation::Value choices[] = {op::CollapseWhitespace{}, op::RemoveAccents{},
                                            op::RemoveInvalidCharacters{}, op::RemoveEmoji{}};
  QStringList titles;
  int current = 0;
  for (int i = 0; i < 4; ++i) {
    titles << cleanChoiceTitle(RenameOperation{choices[i]});
    if (choices[i].index() == RenameOperation::Value(o).index()) current = i;
  }
  form->addRow(tr("Clean up:"), choice(titles, current, tr("What to clean up"), [this](int i) {
                 const RenameOperation::Value made[] = {
                     op::CollapseWhitespace{}, op::RemoveAccents{}, op::RemoveInvalidCharacters{},
                     op::RemoveEmoji{}};
                 changed(made[i], true);
               }));
  if constexpr (std::is_same_v<T, op::RemoveInvalidCharacters>) {
    form->addRow(tr("Put instead:"),
                 textField(o.replacement, tr("Put instead"), [this](std::string s) {
                   changed(op::RemoveInvalidCharacters{std::move(s)});
                 }));
  }
}

template <typename T>
void ChangeEditor::buildExtension(QFormLayout* form, const T& o) {
  constexpr bool sets = std::is_same_v<T, op::SetExtension>;
  form->addRow(
      tr("Extension:"),
      choice({tr("Change its case"), tr("Set it to")}, sets ? 1 : 0,
             tr("What to do with the extension"), [this](int i) {
               changed(i == 1 ? RenameOperation::Value{op::SetExtension{"jpg"}}
                              : RenameOperation::Value{op::ChangeExtensionCase{CaseStyle::lower}},
                       true);
             }));
  if constexpr (sets) {
    form->addRow(tr("New extension:"), textField(o.ext, tr("New extension"), [this](std::string s) {
                   changed(op::SetExtension{std::move(s)});
                 }));
  } else {
    form->addRow(tr("Case:"),
                 choice(caseStyles(), static_cast<int>(o.style), tr("Case"), [this](int i) {
                   changed(op::ChangeExtensionCase{static_cast<CaseStyle>(i)});
                 }));
  }
}

void ChangeEditor::buildOperation(QFormLayout* form) {
  const RenameOperation::Value& value =
      std::get<RuleAction::Operation>(rule_.action.value).operation.value;
  std::visit(
      [this, form](const auto& o) {
        using T = std::decay_t<decltype(o)>;
        if constexpr (std::is_same_v<T, op::Insert>) {
          buildInsert(form, o);
        } else if constexpr (std::is_same_v<T, op::Replace>) {
          buildReplace(form, o);
        } else if constexpr (std::is_same_v<T, op::DeleteText> ||
                             std::is_same_v<T, op::DeleteBlock> ||
                             std::is_same_v<T, op::DeleteCharacters> ||
                             std::is_same_v<T, op::DeleteBefore> ||
                             std::is_same_v<T, op::DeleteAfter> ||
                             std::is_same_v<T, op::DeleteBetween>) {
          buildRemoval(form, o);
        } else if constexpr (std::is_same_v<T, op::MoveBlock>) {
          buildMoveBlock(form, o);
        } else if constexpr (std::is_same_v<T, op::ReplaceRegex>) {
          buildReplaceRegex(form, o);
        } else if constexpr (std::is_same_v<T, op::ChangeCase>) {
          form->addRow(tr("Case:"),
                       choice(caseStyles(), static_cast<int>(o.style), tr("Case"), [this](int i) {
                         changed(op::ChangeCase{static_cast<CaseStyle>(i)});
                       }));
        } else if constexpr (std::is_same_v<T, op::CollapseWhitespace> ||
                             std::is_same_v<T, op::RemoveAccents> ||
                             std::is_same_v<T, op::RemoveInvalidCharacters> ||
                             std::is_same_v<T, op::RemoveEmoji>) {
          buildCleanUp(form, o);
        } else if constexpr (std::is_same_v<T, op::SetExtension> ||
                             std::is_same_v<T, op::ChangeExtensionCase>) {
          buildExtension(form, o);
        }
      },
      value);
}

}  // namespace tessane
