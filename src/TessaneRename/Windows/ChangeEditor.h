// The editor of one change, shaped by its kind: where text goes or is looked for (an anchor with
// its case and occurrence, a block, a character position), what it is replaced with, the case
// style, a regular expression with its problem shown under it, the clean-up, the extension. A
// rule that no kind shows ("advanced") can only be turned on or off, and the editor says so.
//
// Every edit gives the whole rule back through `edited`; the editor keeps its own fields (and the
// focus) while the window applies it.
#pragma once

#include <QWidget>

#include "RenameEngine/Rule.h"

class QFormLayout;
class QLabel;

namespace tessane {

class ChangeEditor : public QWidget {
  Q_OBJECT

 public:
  explicit ChangeEditor(const Rule& rule, QWidget* parent = nullptr);

  const Rule& rule() const { return rule_; }

 signals:
  void edited(const Rule& rule);

 private:
  void build();
  void buildFormat(QFormLayout* form);
  void buildCounter(QFormLayout* form);
  void buildOperation(QFormLayout* form);
  void buildInsert(QFormLayout* form, const op::Insert& o);
  void buildReplace(QFormLayout* form, const op::Replace& o);
  template <typename T>
  void buildRemoval(QFormLayout* form, const T& o);
  void buildRemoveCharacters(QFormLayout* form, const op::DeleteCharacters& o);
  void buildRemoveBetween(QFormLayout* form, const op::DeleteBetween& o);
  void buildMoveBlock(QFormLayout* form, const op::MoveBlock& o);
  void buildReplaceRegex(QFormLayout* form, const op::ReplaceRegex& o);
  template <typename T>
  void buildCleanUp(QFormLayout* form, const T& o);
  template <typename T>
  void buildExtension(QFormLayout* form, const T& o);
  void changed(RenameOperation::Value value, bool rebuild = false);

  Rule rule_;
  QWidget* form_ = nullptr;
};

}  // namespace tessane
