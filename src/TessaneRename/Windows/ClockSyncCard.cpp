#include "TessaneRename/Windows/ClockSyncCard.h"

#include <QButtonGroup>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "TessaneRename/ClockSync.h"
#include "TessaneRename/FolderModel.h"

namespace tessane {

namespace {

const FolderFile* findFile(const FolderModel& model, const std::filesystem::path& path) {
  if (path.empty()) return nullptr;
  for (const FolderFile& f : model.files()) {
    if (f.url == path) return &f;
  }
  return nullptr;
}

}  // namespace

ClockSyncCard::ClockSyncCard(FolderModel& model, QWidget* parent) : QFrame(parent), model_(model) {
  setObjectName("clockSync");
  setFrameShape(QFrame::StyledPanel);
  auto* title = new QLabel(tr("Camera clocks"));
  title->setStyleSheet("font-weight: 600;");
  explanation_ = new QLabel;
  explanation_->setObjectName("clockSyncExplanation");
  explanation_->setWordWrap(true);
  group_ = new QButtonGroup(this);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(10, 8, 10, 8);
  layout->setSpacing(6);
  layout->addWidget(title);
  layout->addWidget(explanation_);
  for (int i = 0; i < 2; ++i) {
    choices_[i] = new QRadioButton;
    choices_[i]->setObjectName(i == 0 ? "clockFirstRight" : "clockSecondRight");
    group_->addButton(choices_[i], i);
    layout->addWidget(choices_[i]);
  }
  apply_ = new QPushButton(tr("Line Up the Clocks"));
  apply_->setObjectName("clockSyncApply");
  apply_->setAccessibleName(tr("Line Up the Clocks"));
  connect(apply_, &QPushButton::clicked, this, [this] { lineUp(group_->checkedId() == 0); });
  connect(group_, &QButtonGroup::idToggled, apply_,
          [this] { apply_->setEnabled(group_->checkedId() >= 0); });
  layout->addWidget(apply_, 0, Qt::AlignLeft);
  result_ = new QLabel;
  result_->setObjectName("clockSyncResult");
  result_->setStyleSheet("font-weight: 600;");
  result_->setWordWrap(true);
  result_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  note_ = new QLabel;
  note_->setObjectName("clockSyncNote");
  note_->setWordWrap(true);
  note_->setForegroundRole(QPalette::PlaceholderText);
  layout->addWidget(result_);
  layout->addWidget(note_);
  setFiles(nullptr, nullptr);
}

void ClockSyncCard::setFiles(const FolderFile* a, const FolderFile* b) {
  const std::filesystem::path first = a != nullptr ? a->url : std::filesystem::path();
  const std::filesystem::path second = b != nullptr ? b->url : std::filesystem::path();
  if (first != first_ || second != second_) {
    result_->clear();  // a result belongs to its pair
    note_->clear();
    group_->setExclusive(false);
    for (QRadioButton* c : choices_)
      c->setChecked(false);
    group_->setExclusive(true);
  }
  first_ = first;
  second_ = second;
  const ClockSync::State state = ClockSync::stateOf(a, b);
  explanation_->setText(ClockSync::explanation(state));
  const bool ready = state == ClockSync::State::ready;
  const FolderFile* files[2] = {a, b};
  for (int i = 0; i < 2; ++i) {
    choices_[i]->setVisible(ready);
    if (!ready) continue;
    const ClockSync::Photo photo = ClockSync::photoOf(model_, *files[i]);
    //: A camera, the photo it took and when its clock says it was taken.
    choices_[i]->setText(
        tr("%1 has the right time (%2, %3)").arg(photo.body, photo.name, photo.time));
    choices_[i]->setAccessibleName(choices_[i]->text());
  }
  apply_->setVisible(ready);
  apply_->setEnabled(ready && group_->checkedId() >= 0);
  result_->setVisible(!result_->text().isEmpty());
  note_->setVisible(!note_->text().isEmpty());
}

void ClockSyncCard::lineUp(bool firstIsRight) {
  const FolderFile* a = findFile(model_, first_);
  const FolderFile* b = findFile(model_, second_);
  if (a == nullptr || b == nullptr) return;
  const std::optional<ClockSync::Result> result =
      firstIsRight ? ClockSync::apply(model_, *a, *b) : ClockSync::apply(model_, *b, *a);
  if (!result) return;
  result_->setText(result->line);
  note_->setText(result->note);
  result_->setVisible(true);
  note_->setVisible(true);
}

}  // namespace tessane
