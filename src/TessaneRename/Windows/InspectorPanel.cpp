#include "TessaneRename/Windows/InspectorPanel.h"

#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

#include "TessaneRename/FileInspection.h"
#include "TessaneRename/FolderModel.h"
#include "TessaneRename/Windows/ClockSyncCard.h"
#include "TessaneRename/Windows/NewNameDelegate.h"
#include "TessaneRename/Windows/ThumbnailCache.h"

namespace tessane {

namespace {

QString esc(const QString& s) {
  return s.toHtmlEscaped();
}

// Long file names have no spaces: let them break after their separators.
QString breakable(const QString& s) {
  QString out;
  for (const QChar c : s) {
    out += c;
    if (c == '_' || c == '-' || c == '.') out += QChar(0x200B);
  }
  return out;
}

QString piecesHtml(const std::vector<DiffPiece>& pieces, const QString& highlight, bool struck) {
  QString html;
  for (const DiffPiece& p : pieces) {
    const QString t = esc(breakable(QString::fromStdString(p.text)));
    if (p.kind == DiffPiece::Kind::same) {
      html += t;
    } else if (struck) {
      html += QStringLiteral("<s>%1</s>").arg(t);
    } else {
      html += QStringLiteral("<span style=\"background-color:%1\">%2</span>").arg(highlight, t);
    }
  }
  return html;
}

QLabel* sectionTitle(const QString& text) {
  auto* label = new QLabel(text);
  label->setStyleSheet("font-weight: 600; margin-top: 6px;");
  return label;
}

QLabel* richLabel(const char* name) {
  auto* label = new QLabel;
  label->setObjectName(name);
  label->setWordWrap(true);
  label->setTextFormat(Qt::RichText);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  label->setFocusPolicy(Qt::StrongFocus);  // readable from the keyboard, like the rest
  return label;
}

const FolderFile* fileAt(const FolderModel& model, const std::filesystem::path& path) {
  for (const FolderFile& f : model.files()) {
    if (f.url == path) return &f;
  }
  return nullptr;
}

}  // namespace

InspectorPanel::InspectorPanel(FolderModel& model, ThumbnailCache* thumbnails, QWidget* parent)
    : QScrollArea(parent), model_(model), thumbnails_(thumbnails) {
  setObjectName("inspector");
  setAccessibleName(tr("File panel"));
  setWidgetResizable(true);
  setFrameShape(QFrame::NoFrame);
  setMinimumWidth(240);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

  auto* content = new QWidget;
  auto* layout = new QVBoxLayout(content);
  layout->setContentsMargins(10, 12, 12, 12);
  layout->setSpacing(6);
  picture_ = new QLabel;
  picture_->setObjectName("inspectorPicture");
  picture_->setAlignment(Qt::AlignCenter);
  title_ = new QLabel;
  title_->setObjectName("inspectorTitle");
  title_->setWordWrap(true);
  title_->setStyleSheet("font-weight: 600; font-size: 14px;");
  names_ = richLabel("inspectorNames");
  names_->setAccessibleName(tr("Names"));
  problems_ = richLabel("inspectorProblems");
  problems_->setAccessibleName(tr("Problems"));
  traceTitle_ = sectionTitle(tr("How the new name is made"));
  trace_ = richLabel("inspectorTrace");
  trace_->setAccessibleName(tr("How the new name is made"));
  fieldsTitle_ = sectionTitle(tr("Shooting data"));
  fields_ = richLabel("inspectorFields");
  fields_->setAccessibleName(tr("Shooting data"));
  clockSync_ = new ClockSyncCard(model_);
  layout->addWidget(picture_);
  layout->addWidget(title_);
  layout->addWidget(names_);
  layout->addWidget(problems_);
  layout->addWidget(traceTitle_);
  layout->addWidget(trace_);
  layout->addWidget(fieldsTitle_);
  layout->addWidget(fields_);
  layout->addSpacing(6);
  layout->addWidget(clockSync_);
  layout->addStretch(1);
  setWidget(content);

  refresh_ = new QTimer(this);
  refresh_->setSingleShot(true);
  refresh_->setInterval(0);
  connect(refresh_, &QTimer::timeout, this, &InspectorPanel::refresh);
  for (auto signal :
       {&FolderModel::selectionChanged, &FolderModel::previewChanged, &FolderModel::filesChanged}) {
    connect(&model_, signal, this, &InspectorPanel::scheduleRefresh);
  }
  refresh();
}

void InspectorPanel::showEvent(QShowEvent* event) {
  QScrollArea::showEvent(event);
  refresh();
}

void InspectorPanel::scheduleRefresh() {
  if (isVisible() && !refresh_->isActive()) refresh_->start();
}

void InspectorPanel::refresh() {
  std::vector<const FolderFile*> selected;
  if (model_.selection().size() <= 2) {  // more only show their number
    for (const std::filesystem::path& p : model_.selection()) {
      if (const FolderFile* f = fileAt(model_, p)) selected.push_back(f);
    }
  }
  clockSync_->setFiles(selected.size() == 2 ? selected[0] : nullptr,
                       selected.size() == 2 ? selected[1] : nullptr);
  const std::size_t count =
      model_.selection().size() <= 2 ? selected.size() : model_.selection().size();

  const bool one = count == 1;
  for (QWidget* w : std::initializer_list<QWidget*>{picture_, names_, problems_, traceTitle_,
                                                    trace_, fieldsTitle_, fields_}) {
    w->setVisible(one);
  }
  if (!one) {
    title_->setText(count == 0
                        ? tr("Select a file to see its shooting data and how its new name is made.")
                        : tr("%n files selected", nullptr, static_cast<int>(count)));
    title_->setStyleSheet(count == 0 ? "" : "font-weight: 600; font-size: 14px;");
    return;
  }
  title_->setStyleSheet("font-weight: 600; font-size: 14px;");
  const FolderFile& file = *selected.front();
  const FileInspection in = FileInspection::of(model_, file);

  showPicture(file);
  title_->setText(breakable(in.currentName));
  showNames(in);
  showProblems(in);
  showTrace(in);
  showFields(in);
}

void InspectorPanel::showPicture(const FolderFile& file) {
  QPixmap picture;
  if (thumbnails_ != nullptr) {
    picture = thumbnails_->thumbnail(file.url, ThumbnailCache::Size::grid);
    if (picture.isNull() && !thumbnails_->isLoaded(file.url)) {
      connect(thumbnails_, &ThumbnailCache::arrived, this, &InspectorPanel::scheduleRefresh,
              Qt::UniqueConnection);
    }
  }
  picture_->setPixmap(picture);
  picture_->setVisible(!picture.isNull());
}

// The current, new and original names, what changes highlighted.
void InspectorPanel::showNames(const FileInspection& in) {
  const QString highlight = NewNameDelegate::highlightOn(palette(), false).name();
  QString names = QStringLiteral("<table cellspacing=\"2\">");
  const auto row = [&names](const QString& label, const QString& html) {
    names += QStringLiteral("<tr><td style=\"padding-right:8px\"><i>%1</i></td><td>%2</td></tr>")
                 .arg(esc(label), html);
  };
  if (in.newName && *in.newName != in.currentName) {
    row(tr("Now"), piecesHtml(in.diff.oldPieces, highlight, true));
    row(tr("New"), piecesHtml(in.diff.newPieces, highlight, false));
  } else if (in.newName) {
    row(tr("New"), tr("unchanged"));
  } else if (in.leftAlone) {
    row(tr("New"), tr("none: the file is left alone"));
  } else {
    row(tr("New"), tr("being worked out…"));
  }
  row(tr("Original"), in.originalName ? esc(breakable(*in.originalName)) : tr("none kept yet"));
  if (in.follows) row(tr("Twin of"), esc(breakable(*in.follows)));
  names += QStringLiteral("</table>");
  names_->setText(names);
}

void InspectorPanel::showProblems(const FileInspection& in) {
  QString problems;
  for (const QString& e : in.errors)
    problems += QStringLiteral("<div style=\"color:#c62828\">%1</div>").arg(esc(e));
  for (const QString& w : in.warnings)
    problems += QStringLiteral("<div style=\"color:#b26a00\">%1</div>").arg(esc(w));
  problems_->setText(problems);
  problems_->setVisible(!problems.isEmpty());
}

// The name after each step, numbered from the first change.
void InspectorPanel::showTrace(const FileInspection& in) {
  QString trace = QStringLiteral("<table cellspacing=\"3\">");
  int number = 0;
  for (const FileInspection::Step& step : in.trace) {
    QString what = QStringLiteral("<b>%1</b>").arg(esc(step.title));
    if (!step.detail.isEmpty()) what += QStringLiteral(" <tt>%1</tt>").arg(esc(step.detail));
    QString result = esc(breakable(step.name));
    if (number > 0 && !step.changed) {
      result = QStringLiteral("<span style=\"color:gray\">%1</span>").arg(tr("no change"));
    }
    for (const QString& p : step.problems)
      result += QStringLiteral("<br><span style=\"color:#b26a00\">%1</span>").arg(esc(p));
    trace += QStringLiteral(
                 "<tr><td valign=\"top\" style=\"color:gray\">%1</td><td>%2<br>%3</td>"
                 "</tr>")
                 .arg(number == 0 ? QString() : QString::number(number), what, result);
    ++number;
  }
  trace += QStringLiteral("</table>");
  trace_->setText(trace);
  traceTitle_->setVisible(!in.trace.empty());
  trace_->setVisible(!in.trace.empty());
}

void InspectorPanel::showFields(const FileInspection& in) {
  QString fields = QStringLiteral("<table cellspacing=\"2\">");
  for (const FileInspection::Field& f : in.fields) {
    fields += QStringLiteral(
                  "<tr><td style=\"color:gray; padding-right:8px\">%1</td><td>%2</td>"
                  "</tr>")
                  .arg(esc(f.label), esc(f.value));
  }
  fields += QStringLiteral("</table>");
  fields_->setText(in.fields.empty() ? tr("No shooting data in this file.") : fields);
}

}  // namespace tessane
