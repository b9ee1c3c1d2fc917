#include "FolderModel.h"

#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QMetaObject>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <utility>

#include "RenameEngine/FileKind.h"
#include "RenameEngine/Unicode.h"
#include "RenameIO/CrashRecovery.h"
#include "RenameIO/FolderListing.h"
#include "RenameIO/OriginalName.h"
#include "RenameIO/RenameAccess.h"
#include "TessaneRename/Messages.h"
#include "TessaneRename/NameBuilder.h"
#include "TessaneRename/RenamePlan.h"
#include "TessaneRename/SessionMemory.h"
#include "TessaneRename/Shoot.h"

namespace tessane {
namespace fs = std::filesystem;

namespace {

Date now() {
  return std::chrono::time_point_cast<std::chrono::microseconds>(std::chrono::system_clock::now());
}

// A path with its folder made absolute and symbolic links resolved, so that one place named two
// ways is one place. A path that doesn't exist is resolved as far as it goes.
fs::path normalised(const fs::path& path) {
  std::error_code error;
  fs::path out = fs::weakly_canonical(fs::absolute(path, error), error);
  if (error) return path.lexically_normal();
  return out;
}

// The model's workers (and the readers they start, which inherit it) give way to the main thread:
// a little less weight for the scheduler, so that the window answers at once however many files
// are being read.
void yieldToMainThread() {
  thread_local bool lowered = false;
  if (lowered) return;
  lowered = true;
  const int current = ::getpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()));
  if (current < 5) ::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), 5);
}

}  // namespace

// What one listing task found.
struct FolderModel::Listing {
  std::uint64_t generation = 0;
  struct One {
    fs::path folder;
    int error = 0;  // errno when the folder could not be listed
    std::vector<FolderFile> files;
    FolderContents contents;
  };
  std::vector<One> folders;
};

// The part of a preview that the rules don't change, made from one snapshot of the files and the
// folders' names with one twin setting and one order.
struct FolderModel::Prepared {
  std::shared_ptr<const std::vector<FolderFile>> files;
  std::shared_ptr<const std::unordered_map<std::string, FolderContents>> names;
  TwinOptions twins;
  BatchOrder order = BatchOrder::captureTime;
  std::unique_ptr<PreparedBatch> batch;
  std::vector<fs::path> subjectPaths;                      // the file of each subject
  std::unordered_map<std::string, std::size_t> rowOfFile;  // each subject's row, by path
  FileCounts counts;                                       // all but warnings and errors

  bool isFor(const std::shared_ptr<const std::vector<FolderFile>>& f,
             const std::shared_ptr<const std::unordered_map<std::string, FolderContents>>& n,
             const TwinOptions& t, BatchOrder o) const {
    return files == f && names == n && twins == t && order == o;
  }
};

// What one preview build made.
struct FolderModel::Built {
  std::uint64_t generation = 0;
  RenamePreview preview;
  std::shared_ptr<const Prepared> prepared;
  FileCounts counts;
  std::string missingText;
};

// One batch of moves on its way through apply, record and settle.
struct FolderModel::BatchJob {
  std::vector<FileMove> moves;
  RenameHistory::Kind kind = RenameHistory::Kind::rename;
  Toast::After after = Toast::After::rename;
  std::vector<RenameHistory::Entry> goingBackChain;  // empty: not going back
  Date date;
  fs::path journalFolder;
  std::optional<OriginalNames> keepOriginals;
  BatchRunner::Applied applied;
  std::optional<Result<BatchRunner::Done, BatchRunner::Failure>> outcome;
};

void FolderModel::startTask(std::function<void()> task) {
  pool_.start([task = std::move(task)] {
    yieldToMainThread();
    task();
  });
}

template <typename T>
void FolderModel::retire(T&& old) {
  auto holder = std::make_shared<std::decay_t<T>>(std::forward<T>(old));
  startTask([holder]() mutable { holder.reset(); });
}

FolderModel::FolderModel(AppContext& app, QObject* parent)
    : QObject(parent),
      app_(app),
      files_(std::make_shared<const std::vector<FolderFile>>()),
      twinOptions_(app.preferences().twinOptions()),
      previewSources_(files_),
      folderNames_(std::make_shared<const std::unordered_map<std::string, FolderContents>>()) {
  // Listing, reading and building take one thread each at most; the readers spread themselves
  // over the cores.
  pool_.setMaxThreadCount(3);
  const Preferences prefs = app_.preferences();
  order_ = prefs.batchOrder().value_or(BatchOrder::captureTime);
  duplicates_ = prefs.duplicatePolicy();
}

FolderModel::~FolderModel() {
  metadataStop_.request_stop();
  pool_.waitForDone();
}

QString FolderModel::errorMessageText() const {
  return errorMessage_ ? QString::fromStdString(*errorMessage_) : QString();
}

void FolderModel::setError(std::optional<std::string> message) {
  if (errorMessage_ == message) return;
  errorMessage_ = std::move(message);
  emit errorMessageChanged();
}

void FolderModel::dismissError() {
  setError(std::nullopt);
}

void FolderModel::dismissToast() {
  if (!toast_) return;
  toast_.reset();
  emit toastChanged();
}

// ---- Opening and listing ----

void FolderModel::resumeSession() {
  const SessionMemory::Session session =
      SessionMemory(app_.settings()).restore(app_.preferences().resumesSession());
  // A stack without rules names nothing (every row "Unchanged"): it is no session to resume, and
  // is what earlier versions saved after a first start.
  if (session.stack && !session.stack->rules.empty()) {
    setRules(*session.stack);
  } else {
    RuleStack stack;
    const Preferences preferences = app_.preferences();
    NameBuilder::firstStart(!app_.bodies().bodies().tags.empty())
        .applyTo(stack, preferences.nameSeparator(), preferences.nameCounter());
    setRules(std::move(stack));
  }
  if (!session.folders.empty()) open(session.folders, &session.selected);
}

void FolderModel::showRecovery(const RecoveryReport& report) {
  if (!report.empty()) setError(Messages::of(report));
}

void FolderModel::open(const std::vector<fs::path>& urls) {
  open(urls, nullptr);
}

// `selectOnly`: the folders to select among those opened (the last session's selection); every
// opened folder when it is null or names none of them.
void FolderModel::open(const std::vector<fs::path>& urls, const std::set<fs::path>* selectOnly) {
  std::vector<fs::path> newFolders;
  std::vector<fs::path> dropped;
  std::set<fs::path> seen;
  for (const fs::path& given : urls) {
    const fs::path path = normalised(given);
    if (!seen.insert(path).second) continue;
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (fs::is_directory(status)) {
      newFolders.push_back(path);
    } else if (fs::is_regular_file(status)) {
      dropped.push_back(path);
    }
  }
  if (newFolders.empty() && dropped.empty()) {
    setError(Messages::dropSomething());
    return;
  }
  setError(std::nullopt);
  std::set<fs::path> select;
  for (const fs::path& f : newFolders)
    select.insert(f);
  for (const fs::path& file : dropped) {
    const fs::path parent = file.parent_path();
    select.insert(parent);
    newFolders.push_back(parent);
    if (std::find(droppedURLs_.begin(), droppedURLs_.end(), file) == droppedURLs_.end()) {
      droppedURLs_.push_back(file);
    }
    pendingTicks_.insert(file);
  }
  bool foldersGrew = false;
  for (const fs::path& f : newFolders) {
    if (std::find(folders_.begin(), folders_.end(), f) != folders_.end()) continue;
    folders_.push_back(f);
    foldersGrew = true;
  }
  if (!dropped.empty()) {
    // Files dropped without their folder: only they are renamed, until the user ticks others.
    emit pendingTicksChanged();
    setScope(RenameScope::selected);
  }
  if (foldersGrew) {
    emit foldersChanged();
    saveSession();
  }
  if (selectOnly != nullptr) {
    std::set<fs::path> wanted;
    for (const fs::path& f : *selectOnly) {
      if (select.count(normalised(f)) > 0) wanted.insert(normalised(f));
    }
    if (!wanted.empty()) select = std::move(wanted);
  }
  folder_ = dropped.empty() ? *select.begin() : dropped.front().parent_path();
  if (dropped.empty() && select.count(newFolders.front()) > 0) folder_ = newFolders.front();
  emit folderChanged();
  selectFolders(select);
}

void FolderModel::removeFolder(const fs::path& folder) {
  const auto it = std::find(folders_.begin(), folders_.end(), folder);
  if (it == folders_.end()) return;
  folders_.erase(it);
  folderContents_.erase(folder);
  auto names = std::make_shared<std::unordered_map<std::string, FolderContents>>(*folderNames_);
  names->erase(folder.native());
  retire(std::exchange(folderNames_, std::move(names)));
  emit foldersChanged();
  saveSession();
  std::set<fs::path> select = selectedFolders_;
  select.erase(folder);
  if (select.empty() && !folders_.empty()) select.insert(folders_.front());
  selectFolders(select);
}

void FolderModel::selectFolders(const std::set<fs::path>& wanted) {
  selectedFolders_.clear();
  shownFolders_.clear();
  for (const fs::path& f : folders_) {
    if (wanted.count(f) == 0) continue;
    selectedFolders_.insert(f);
    shownFolders_.push_back(f);
  }
  emit selectedFoldersChanged();
  saveSession();
  listFolders(false);
}

std::string FolderModel::selectionTitle() const {
  if (shownFolders_.size() > 1) {
    return Messages::foldersSelected(static_cast<std::int64_t>(shownFolders_.size()));
  }
  if (shownFolders_.empty()) return {};
  return unicode::toDisplayable(shownFolders_.front().filename().native());
}

void FolderModel::listFolders(bool again) {
  auto listing = std::make_shared<Listing>();
  listing->generation = ++listingGeneration_;
  listingUnderWay_ = true;
  std::vector<fs::path> toList;
  for (const fs::path& f : shownFolders_) {
    if (again || folderContents_.count(f) == 0) toList.push_back(f);
  }
  if (toList.empty()) {
    showListing(listing);
    return;
  }
  // Names left under temporary names by a batch that died are put back the first time a folder
  // is opened, before it is listed.
  std::vector<fs::path> firstTime;
  for (const fs::path& f : toList) {
    if (temporaryNamesChecked_.insert(f).second) firstTime.push_back(f);
  }
  const fs::path journals = app_.journalFolder();
  const TwinOptions twins = twinOptions_;
  // A listing leads to a build: the window shows its progress from now on.
  ++previewBuildCount_;
  emit previewBuildCountChanged();
  SystemFileRenaming& system = app_.fileSystem();
  startTask([this, listing, toList, firstTime, journals, twins, &system] {
    for (const fs::path& f : firstTime)
      CrashRecovery::restoreTemporaryNames(f, journals, system);
    for (const fs::path& folder : toList) {
      Listing::One one;
      one.folder = folder;
      Result<std::vector<ListedFile>> files = FolderListing::files(folder);
      if (!files) {
        one.error = files.error().code != 0 ? files.error().code : EIO;
        one.contents.listed = false;
        listing->folders.push_back(std::move(one));
        continue;
      }
      Result<std::vector<std::string>> names = FolderListing::names(folder);
      one.contents.listed = names.ok();
      if (names) one.contents.names = std::move(names.value());
      std::vector<std::optional<std::string>> keys;
      std::vector<FileName> parsed;
      for (const ListedFile& f : files.value()) {
        FolderFile file;
        file.url = f.path;
        file.name = FileName::parse(f.name);
        file.primaryURL = f.path;
        file.nameIsText = f.nameIsText;
        one.contents.files.push_back(f.name);
        keys.push_back(f.nameIsText ? twinKey(f.name, "", twins) : std::nullopt);
        parsed.push_back(file.name);
        one.files.push_back(std::move(file));
      }
      RenameAccess::describe(folder, one.contents);
      std::vector<std::size_t> order(one.files.size());
      for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
      for (const TwinGroup& g : groupTwins(keys, parsed, order)) {
        for (std::size_t m : g.members)
          one.files[m].primaryURL = one.files[g.primary].url;
      }
      listing->folders.push_back(std::move(one));
    }
    QMetaObject::invokeMethod(
        this,
        [this, listing] {
          --previewBuildCount_;
          emit previewBuildCountChanged();
          showListing(listing);
        },
        Qt::QueuedConnection);
  });
}

void FolderModel::showListing(std::shared_ptr<Listing> listing) {
  if (listing->generation != listingGeneration_) return;
  listingUnderWay_ = false;
  // The names of the folders not listed again carry over; a long listing is not copied.
  std::shared_ptr<std::unordered_map<std::string, FolderContents>> names;
  if (!listing->folders.empty()) {
    names = std::make_shared<std::unordered_map<std::string, FolderContents>>();
    std::set<std::string> relisted;
    for (const Listing::One& one : listing->folders)
      relisted.insert(one.folder.native());
    for (const auto& [folder, contents] : *folderNames_) {
      if (relisted.count(folder) == 0) names->emplace(folder, contents);
    }
  }
  for (Listing::One& one : listing->folders) {
    if (one.error != 0) {
      folderContents_.erase(one.folder);
      names->erase(one.folder.native());
      if (one.error == EACCES && !droppedURLs_.empty() && folder_ == one.folder) {
        accessNeeded_ = one.folder;
        emit folderAccessNeededChanged();
      }
      setError(Messages::folderUnreadable(one.folder));
      continue;
    }
    if (accessNeeded_ == one.folder) {
      accessNeeded_.reset();
      emit folderAccessNeededChanged();
    }
    (*names)[one.folder.native()] = std::move(one.contents);
    folderContents_[one.folder] =
        std::make_shared<const std::vector<FolderFile>>(std::move(one.files));
  }
  if (names) retire(std::exchange(folderNames_, std::move(names)));

  // One folder shown is its listing as it is; several are put together.
  std::shared_ptr<const std::vector<FolderFile>> files;
  if (shownFolders_.size() == 1 && folderContents_.count(shownFolders_.front()) > 0) {
    files = folderContents_[shownFolders_.front()];
  } else {
    auto together = std::make_shared<std::vector<FolderFile>>();
    for (const fs::path& f : shownFolders_) {
      const auto it = folderContents_.find(f);
      if (it != folderContents_.end()) {
        together->insert(together->end(), it->second->begin(), it->second->end());
      }
    }
    files = std::move(together);
  }
  retire(std::exchange(files_, std::move(files)));
  // Ticks waiting for their files, which bring their twins.
  if (!pendingTicks_.empty()) {
    std::vector<fs::path> arrived;
    for (const FolderFile& f : *files_) {
      if (pendingTicks_.erase(f.url) > 0) arrived.push_back(f.url);
    }
    if (!arrived.empty()) {
      emit pendingTicksChanged();
      for (const fs::path& f : withTwins(arrived))
        checked_.insert(f);
      emit checkedChanged();
    }
  }
  emit filesChanged();
  startMetadata();
  schedulePreview();
  if (std::exchange(restoreWaitsForListing_, false)) restoreOriginalNames();
}

// ---- Metadata ----

const MetadataMap& FolderModel::ownMetadata(const FolderFile& file) const {
  if (file.primaryURL == file.url) return file.metadata;
  auto [at, isNew] = ownMetadata_.try_emplace(file.url.native());
  if (isNew) {
    const MetadataProvider provider;
    at->second = provider.read(file.url, fileKindOf(file.name.ext)).values;
  }
  return at->second;
}

void FolderModel::startMetadata() {
  ownMetadata_.clear();
  metadataStop_.request_stop();
  metadataStop_ = std::stop_source();
  const std::uint64_t generation = ++metadataGeneration_;
  const std::shared_ptr<const std::vector<FolderFile>> snapshot = files_;
  setReading(!snapshot->empty());
  if (snapshot->empty()) return;
  auto bodies = std::make_shared<CameraBodies>(app_.bodies().bodies());
  const TwinOptions twins = twinOptions_;
  const std::stop_token stop = metadataStop_.get_token();
  startTask([this, generation, snapshot, bodies, twins, stop] {
    // Files whose names are not text are never renamed, but their shooting data is shown:
    // they are read on their own, outside any twin group.
    Shoot shoot, notText;
    std::vector<std::size_t> fileOf, notTextFileOf;
    for (std::size_t i = 0; i < snapshot->size(); ++i) {
      const FolderFile& f = (*snapshot)[i];
      RenameSubject s;
      s.name = f.name.fullName();
      s.folder = f.url.parent_path();
      Shoot& into = f.nameIsText ? shoot : notText;
      into.subjects.push_back(std::move(s));
      into.paths.push_back(f.url);
      (f.nameIsText ? fileOf : notTextFileOf).push_back(i);
    }
    ShootRequest request;
    request.bodies = bodies.get();
    request.twins = &twins;
    request.stop = stop;
    request.progress = [this, generation](std::size_t done, std::size_t total) {
      if (done % 256 != 0 && done != total) return;
      QMetaObject::invokeMethod(
          this,
          [this, generation, done, total] {
            if (generation == metadataGeneration_) {
              emit metadataProgress(static_cast<qint64>(done), static_cast<qint64>(total));
            }
          },
          Qt::QueuedConnection);
    };
    std::vector<ShootNotice> notices;
    if (!readShootMetadata(shoot, request, notices)) return;  // stopped: a newer read follows
    if (!notText.subjects.empty()) {
      ShootRequest alone = request;
      alone.twins = nullptr;
      alone.progress = nullptr;
      if (!readShootMetadata(notText, alone, notices)) return;
    }
    auto read = std::make_shared<std::vector<FolderFile>>(*snapshot);
    const auto take = [&](Shoot& from, const std::vector<std::size_t>& at) {
      for (std::size_t k = 0; k < at.size(); ++k) {
        FolderFile& f = (*read)[at[k]];
        RenameSubject& s = from.subjects[k];
        f.metadata = std::move(s.metadata);
        f.originalName = std::move(s.originalName);
        f.bodyTag = std::move(s.bodyTag);
        f.captureDate = s.captureDate;
        f.cameraModel = std::move(s.cameraModel);
      }
    };
    take(shoot, fileOf);
    take(notText, notTextFileOf);
    QMetaObject::invokeMethod(
        this,
        [this, generation, snapshot, read] {
          if (generation != metadataGeneration_ || files_ != snapshot) return;
          retire(std::exchange(files_, read));
          setReading(false);
          emit filesChanged();
          schedulePreview();
        },
        Qt::QueuedConnection);
  });
}

// ---- Preview ----

void FolderModel::setBeforeBuildForTesting(std::function<void(std::uint64_t)> hook) {
  beforeBuild_ = std::move(hook);
}

// Edits that come together (a drop, then its listing and its settings) make one build.
void FolderModel::schedulePreview() {
  if (previewScheduled_) return;
  previewScheduled_ = true;
  ++previewBuildCount_;
  emit previewBuildCountChanged();
  QTimer::singleShot(0, this, [this] {
    previewScheduled_ = false;
    startPreview();
  });
}

void FolderModel::startPreview() {
  const std::uint64_t generation = ++previewGeneration_;

  RenameOptions options;
  options.order = order_;
  options.duplicates = duplicates_;
  Planned<RenameSettings> resolved = resolveSettings(options, app_.preferences());
  RenameSettings settings = resolved ? std::move(resolved.value()) : RenameSettings{};
  if (!resolved) settings.naming = NamingContext::systemDefault();
  settings.twins = twinOptions_;

  auto stack = std::make_shared<const RuleStack>(withSettingsRules(rules_, settings));
  const NamingContext naming = settings.naming;
  const DuplicatePolicy duplicates = settings.duplicates;
  const BatchOrder order = settings.order;
  const TwinOptions twins = settings.twins;
  const std::shared_ptr<const std::unordered_map<std::string, FolderContents>> names = folderNames_;
  const std::shared_ptr<const std::vector<FolderFile>> snapshot = files_;
  std::shared_ptr<const Prepared> prepared = prepared_;
  if (prepared && !prepared->isFor(snapshot, names, twins, order)) prepared.reset();
  const std::function<void(std::uint64_t)> hook = beforeBuild_;

  startTask([this, generation, stack, naming, duplicates, order, twins, names, snapshot, prepared,
             hook]() mutable {
    if (hook) hook(generation);
    if (!prepared) prepared = prepare(snapshot, names, twins, order);
    auto built = std::make_shared<Built>();
    built->generation = generation;
    built->preview = buildPreview(*prepared->batch, CompiledRuleStack(*stack), naming, duplicates);
    built->counts = prepared->counts;
    built->missingText = naming.missingText;
    for (const PlannedRename& row : built->preview.items) {
      if (row.status == PreviewStatus::error) ++built->counts.errors;
      if (row.status == PreviewStatus::warning) ++built->counts.warnings;
    }
    built->prepared = std::move(prepared);
    QMetaObject::invokeMethod(
        this, [this, built] { publishPreview(built); }, Qt::QueuedConnection);
  });
}

void FolderModel::publishPreview(std::shared_ptr<Built> built) {
  --previewBuildCount_;
  emit previewBuildCountChanged();
  if (built->generation != previewGeneration_) {  // a newer build is on its way
    retire(std::move(built));
    return;
  }
  if (!preview_) preview_.emplace();
  std::swap(*preview_, built->preview);
  previewSources_ = built->prepared->files;
  std::swap(prepared_, built->prepared);
  counts_ = built->counts;
  std::swap(previewMissingText_, built->missingText);
  retire(std::move(built));  // what was shown before
  scopeInfo_.ownWarnings.resize(preview_->items.size());
  for (std::size_t r = 0; r < preview_->items.size(); ++r) {
    scopeInfo_.ownWarnings[r] =
        static_cast<std::uint8_t>(std::min<std::size_t>(preview_->items[r].warnings.size(), 255));
  }
  updateScope();
  emit previewChanged();
  if (trimAfterBatch_ && isSettled()) {
    // A batch and the listing, reading and preview after it free as much as a whole folder's
    // worth of rows; the allocator is asked to give it back, so that a window renaming all day
    // stays the size it was after its first batch.
    trimAfterBatch_ = false;
    startTask([] { ::malloc_trim(0); });
  }
}

void FolderModel::setRules(RuleStack rules) {
  rules_ = std::move(rules);
  emit rulesChanged();
  saveSession();
  schedulePreview();
}

void FolderModel::setTwinOptions(TwinOptions options) {
  twinOptions_ = std::move(options);
  emit twinOptionsChanged();
  listFolders(true);
}

void FolderModel::setOrder(BatchOrder order) {
  order_ = order;
  emit orderChanged();
  schedulePreview();
}

void FolderModel::setDuplicates(DuplicatePolicy policy) {
  duplicates_ = policy;
  emit duplicatesChanged();
  schedulePreview();
}

void FolderModel::settingsChanged() {
  if (!app_.bodies().bodies().tags.empty()) {
    RuleStack rules = rules_;
    if (NameBuilder::takeBodyIn(rules, app_.preferences().nameSeparator()))
      setRules(std::move(rules));
  }
  startMetadata();  // body tags and clock corrections come with the metadata
  schedulePreview();
}

// ---- Ticks, scope, selection ----

void FolderModel::setTicked(const fs::path& file, bool ticked) {
  setTicked(std::vector<fs::path>{file}, ticked);
}

void FolderModel::setTicked(const std::vector<fs::path>& files, bool ticked) {
  bool changed = false;
  for (const fs::path& f : withTwins(files))
    changed |= ticked ? checked_.insert(f).second : checked_.erase(f) > 0;
  if (!changed) return;
  updateScope();
  emit checkedChanged();
}

void FolderModel::tickWholeShots() {
  setTicked(std::vector<fs::path>(checked_.begin(), checked_.end()), true);
}

namespace {

bool filtersNothing(const ListFilter& f) {
  return f.kinds.empty() && f.bodyTags.empty() && f.statuses.empty() && f.search.empty();
}

// The shots of more than one file: the places in `files` of each one's files, by the path of the
// file whose name they follow.
using Shots = std::unordered_map<std::string, std::vector<std::size_t>>;
Shots shotsOf(const std::vector<FolderFile>& files) {
  Shots shots;
  for (const FolderFile& f : files) {
    if (f.primaryURL != f.url) shots.try_emplace(f.primaryURL.native());
  }
  if (shots.empty()) return shots;
  for (std::size_t i = 0; i < files.size(); ++i) {
    const auto shot = shots.find(files[i].primaryURL.native());
    if (shot != shots.end()) shot->second.push_back(i);
  }
  return shots;
}

PreviewStatus statusOf(const PlannedRename& row) {
  if (!row.errors.empty()) return PreviewStatus::error;
  if (!row.warnings.empty()) return PreviewStatus::warning;
  return row.changes ? PreviewStatus::ok : PreviewStatus::unchanged;
}

}  // namespace

// The files with the other files of their shots, each once.
std::vector<fs::path> FolderModel::withTwins(const std::vector<fs::path>& files) const {
  const Shots shots = shotsOf(*files_);
  std::unordered_map<std::string, const std::vector<std::size_t>*> shotOf;
  for (const auto& [primary, members] : shots) {
    for (std::size_t m : members)
      shotOf.emplace((*files_)[m].url.native(), &members);
  }
  std::vector<fs::path> out;
  std::set<std::string> seen;
  for (const fs::path& given : files) {
    const auto shot = shotOf.find(given.native());
    if (shot == shotOf.end()) {
      if (seen.insert(given.native()).second) out.push_back(given);
      continue;
    }
    for (std::size_t m : *shot->second) {
      if (seen.insert((*files_)[m].url.native()).second) out.push_back((*files_)[m].url);
    }
  }
  return out;
}

void FolderModel::setScope(RenameScope scope) {
  if (scope_ == scope) return;
  scope_ = scope;
  updateScope();
  emit scopeChanged();
}

void FolderModel::setFilter(ListFilter filter) {
  filter_ = std::move(filter);
  updateScope();
  emit filterChanged();
}

void FolderModel::setReading(bool reading) {
  if (isReading_ == reading) return;
  isReading_ = reading;
  emit isReadingChanged();
}

void FolderModel::setSelection(std::set<fs::path> selection) {
  selection_ = std::move(selection);
  emit selectionChanged();
}

std::optional<fs::path> FolderModel::goToFirstError() {
  if (!preview_) return std::nullopt;
  for (const PlannedRename& row : preview_->items) {
    if (row.status != PreviewStatus::error) continue;
    const fs::path file = prepared_->subjectPaths[row.subjectIndex];
    setSelection({file});
    return file;
  }
  return std::nullopt;
}

// ---- Queries ----

const PlannedRename* FolderModel::previewRow(const fs::path& file) const {
  if (!preview_) return nullptr;
  const auto it = prepared_->rowOfFile.find(file.native());
  return it == prepared_->rowOfFile.end() ? nullptr : &preview_->items[it->second];
}

FileCounts FolderModel::fileCounts() const {
  return counts_;
}

std::vector<const FolderFile*> FolderModel::visibleFiles(const ListFilter& filter) const {
  const std::string search = unicode::foldCase(filter.search);
  std::vector<const FolderFile*> out;
  for (const FolderFile& f : *files_) {
    if (!filter.kinds.empty() && filter.kinds.count(fileKindOf(f.name.ext)) == 0) continue;
    if (!filter.bodyTags.empty() && (!f.bodyTag || filter.bodyTags.count(*f.bodyTag) == 0)) {
      continue;
    }
    const PlannedRename* row = previewRow(f.url);
    if (!filter.statuses.empty() && (row == nullptr || filter.statuses.count(row->status) == 0)) {
      continue;
    }
    if (!search.empty()) {
      const bool inName = unicode::foldCase(f.name.fullName()).find(search) != std::string::npos;
      const bool inNew =
          row != nullptr &&
          unicode::foldCase(row->newName.fullName()).find(search) != std::string::npos;
      if (!inName && !inNew) continue;
    }
    out.push_back(&f);
  }
  return out;
}

// Per file of `files`: whether it is in the scope. Under "all" a shot is in when any of its files
// is shown, so that a filter never splits one.
std::vector<bool> FolderModel::scopeOf(const std::vector<FolderFile>& files) const {
  std::vector<bool> flags(files.size(), true);
  if (scope_ == RenameScope::selected) {
    for (std::size_t i = 0; i < files.size(); ++i)
      flags[i] = checked_.count(files[i].url) > 0;
    return flags;
  }
  if (filtersNothing(filter_)) return flags;
  std::set<std::string> shownShots;
  for (const FolderFile* f : visibleFiles(filter_))
    shownShots.insert(f->primaryURL.native());
  for (std::size_t i = 0; i < files.size(); ++i)
    flags[i] = shownShots.count(files[i].primaryURL.native()) > 0;
  return flags;
}

void FolderModel::updateScope() {
  ScopeInfo& info = scopeInfo_;
  info.changed = 0;
  info.split = 0;
  if (!preview_ || !prepared_) {
    info.subjectInScope.clear();
    return;
  }
  const std::vector<FolderFile>& files = *previewSources_;
  if (scope_ == RenameScope::all && filtersNothing(filter_)) {
    // Every file is in: no shot can be split.
    info.subjectInScope.assign(prepared_->subjectPaths.size(), true);
    for (std::size_t r = 0; r < preview_->items.size(); ++r) {
      PlannedRename& row = preview_->items[r];
      if (row.warnings.size() > info.ownWarnings[r]) {
        row.warnings.resize(info.ownWarnings[r]);
        row.status = statusOf(row);
        if (row.status != PreviewStatus::warning) --counts_.warnings;
      }
      if (row.changes) ++info.changed;
    }
    return;
  }
  const std::vector<bool> fileFlags = scopeOf(files);
  info.subjectInScope.assign(prepared_->subjectPaths.size(), false);
  // Subjects are the files whose names are text, in the files' order.
  std::vector<std::size_t> fileOfSubject(prepared_->subjectPaths.size(), 0);
  for (std::size_t i = 0, s = 0; i < files.size() && s < fileOfSubject.size(); ++i) {
    if (!files[i].nameIsText) continue;
    fileOfSubject[s] = i;
    info.subjectInScope[s] = fileFlags[i];
    ++s;
  }
  const Shots shots = shotsOf(files);
  std::set<std::string> splitShots;
  FileCounts& counts = counts_;
  counts.warnings = 0;
  counts.errors = 0;
  for (std::size_t r = 0; r < preview_->items.size(); ++r) {
    PlannedRename& row = preview_->items[r];
    if (row.warnings.size() > info.ownWarnings[r]) {
      row.warnings.resize(info.ownWarnings[r]);
      row.status = statusOf(row);
    }
    const std::size_t s = row.subjectIndex;
    if (info.subjectInScope[s] && row.changes) {
      ++info.changed;
      const auto shot = shots.find(files[fileOfSubject[s]].primaryURL.native());
      if (shot != shots.end()) {
        std::vector<std::string> outside;
        for (std::size_t m : shot->second) {
          if (!fileFlags[m]) outside.push_back(files[m].name.fullName());
        }
        if (!outside.empty()) {
          splitShots.insert(shot->first);
          row.warnings.push_back(
              PreviewWarning{PreviewWarning::Kind::incompleteTwins, {}, std::move(outside)});
          row.status = statusOf(row);
        }
      }
    }
    if (row.status == PreviewStatus::error) ++counts.errors;
    if (row.status == PreviewStatus::warning) ++counts.warnings;
  }
  info.split = static_cast<std::int64_t>(splitShots.size());
}

bool FolderModel::isInScope(const fs::path& file) const {
  if (!prepared_) return false;
  const auto it = prepared_->rowOfFile.find(file.native());
  if (it == prepared_->rowOfFile.end() || !preview_) return false;
  const std::size_t s = preview_->items[it->second].subjectIndex;
  return s < scopeInfo_.subjectInScope.size() && scopeInfo_.subjectInScope[s];
}

bool FolderModel::isSettled() const {
  return preview_ && previewBuildCount_ == 0 && !isRenaming_ && !isReading_ && !listingUnderWay_ &&
         previewSources_ == files_;
}

bool FolderModel::canRename() const {
  if (!preview_ || isRenaming_ || isReading_ || preview_->hasErrors()) return false;
  return previewSources_ == files_ && scopeInfo_.changed > 0;
}

// ---- Batches ----

void FolderModel::rename() {
  if (!preview_ || isRenaming_) {
    setError(Messages::nothingToRename());
    return;
  }
  if (isReading_ || previewSources_ != files_) {
    setError(Messages::stillReading());
    return;
  }
  if (preview_->hasErrors()) {
    setError(Messages::fixErrorsFirst());
    return;
  }
  std::vector<FileMove> moves =
      movesOf(*preview_, prepared_->subjectPaths, &scopeInfo_.subjectInScope);
  if (moves.empty()) {
    setError(Messages::nothingToRename());
    return;
  }
  runBatch(std::move(moves), RenameHistory::Kind::rename, Toast::After::rename, {});
}

void FolderModel::undo() {
  app_.history().reload();  // the tool may have renamed since
  // The newest batch of this window's folders: one that the tool or another window made in other
  // folders is not this window's to undo.
  const std::vector<RenameHistory::Entry>& entries = app_.history().entries();
  const auto mine =
      std::find_if(entries.begin(), entries.end(), [&](const RenameHistory::Entry& e) {
        const std::vector<fs::path> needed = RenameHistory::foldersOf(e);
        return !e.isReverted && std::all_of(needed.begin(), needed.end(), [&](const fs::path& f) {
          return std::find(folders_.begin(), folders_.end(), normalised(f)) != folders_.end();
        });
      });
  if (mine == entries.end() || isRenaming_) {
    setError(Messages::nothingToUndo());
    return;
  }
  revert(mine->id);
}

void FolderModel::revert(const Uuid& id) {
  if (isRenaming_) {
    setError(Messages::nothingToUndo());
    return;
  }
  app_.history().reload();
  std::vector<RenameHistory::Entry> chain = app_.history().goingBackChain(id);
  if (chain.empty()) {
    const auto& entries = app_.history().entries();
    const bool known = std::any_of(entries.begin(), entries.end(),
                                   [&](const RenameHistory::Entry& e) { return e.id == id; });
    BatchRunner::Failure failure;
    failure.kind = known ? BatchRunner::Failure::Kind::alreadyReverted
                         : BatchRunner::Failure::Kind::unknownEntry;
    setError(Messages::of(failure));
    return;
  }
  for (const RenameHistory::Entry& e : chain) {
    for (const fs::path& folder : RenameHistory::foldersOf(e)) {
      if (std::find(folders_.begin(), folders_.end(), normalised(folder)) == folders_.end()) {
        setError(Messages::addFolderToGoBack());
        return;
      }
    }
  }
  std::vector<FileMove> moves = RenameHistory::reversal(chain);
  runBatch(std::move(moves), RenameHistory::Kind::rename, Toast::After::goingBack,
           std::move(chain));
}

// The names are read from the files now, not taken from the last read, which may be under way or
// older than the last rename.
void FolderModel::restoreOriginalNames() {
  if (isRenaming_) {
    setError(Messages::nothingToRename());
    return;
  }
  if (listingUnderWay_) {  // the files' names are changing (a batch just ended): their new ones
    restoreWaitsForListing_ = true;
    return;
  }
  const std::vector<bool> flags = scopeOf(*files_);
  auto files = std::make_shared<std::vector<std::pair<fs::path, std::string>>>();
  for (std::size_t i = 0; i < files_->size(); ++i) {
    const FolderFile& f = (*files_)[i];
    if (flags[i] && f.nameIsText) files->emplace_back(f.url, f.name.fullName());
  }
  setError(std::nullopt);
  isRenaming_ = true;
  emit isRenamingChanged();
  startTask([this, files] {
    auto moves = std::make_shared<std::vector<FileMove>>();
    for (const auto& [path, name] : *files) {
      const std::optional<std::string> original = OriginalName::read(path);
      if (original && *original != name)
        moves->push_back(FileMove{path, path.parent_path() / *original});
    }
    QMetaObject::invokeMethod(
        this,
        [this, moves] {
          if (moves->empty()) {
            isRenaming_ = false;
            emit isRenamingChanged();
            setError(Messages::alreadyOriginalNames());
            return;
          }
          runBatch(std::move(*moves), RenameHistory::Kind::restoreOriginals,
                   Toast::After::originalNames, {});
        },
        Qt::QueuedConnection);
  });
}

void FolderModel::runBatch(std::vector<FileMove> moves, RenameHistory::Kind kind,
                           Toast::After after, std::vector<RenameHistory::Entry> goingBackChain) {
  setError(std::nullopt);
  isRenaming_ = true;
  emit isRenamingChanged();
  emit previewChanged();  // Rename is off while the batch runs

  auto job = std::make_shared<BatchJob>();
  job->moves = std::move(moves);
  job->kind = kind;
  job->after = after;
  job->goingBackChain = std::move(goingBackChain);
  job->date = now();
  job->journalFolder = app_.journalFolder();
  if (kind == RenameHistory::Kind::rename && job->goingBackChain.empty()) {
    job->keepOriginals = app_.preferences().originalNames();
  }
  SystemFileRenaming& system = app_.fileSystem();
  startTask([this, job, &system] {
    job->applied = !job->goingBackChain.empty()
                       ? BatchRunner::applyGoingBack(job->goingBackChain, job->date, system,
                                                     job->journalFolder)
                       : BatchRunner::apply(job->moves, job->date, system, job->journalFolder,
                                            job->keepOriginals);
    QMetaObject::invokeMethod(
        this,
        [this, job] {
          // The history belongs to this thread; waiting for its file does not.
          const std::shared_future<bool> saved =
              BatchRunner::record(job->applied, job->kind, job->date, app_.history());
          startTask([this, job, saved] {
            job->outcome.emplace(BatchRunner::settle(std::move(job->applied), saved));
            QMetaObject::invokeMethod(
                this, [this, job] { finishBatch(job); }, Qt::QueuedConnection);
          });
        },
        Qt::QueuedConnection);
  });
}

// Ticks and the selected rows stay on the files they were on, under their new names.
void FolderModel::followMoves(const std::vector<FileMove>& moves) {
  if (checked_.empty() && selection_.empty()) return;
  std::unordered_map<std::string, const fs::path*> moved;
  for (const FileMove& m : moves)
    moved.emplace(m.source.native(), &m.destination);
  const auto follow = [&moved](std::set<fs::path>& paths) {
    std::set<fs::path> out;
    for (const fs::path& p : paths) {
      const auto it = moved.find(p.native());
      out.insert(it == moved.end() ? p : *it->second);
    }
    if (out == paths) return false;
    paths = std::move(out);
    return true;
  };
  if (follow(checked_)) emit checkedChanged();
  if (follow(selection_)) emit selectionChanged();
}

void FolderModel::finishBatch(std::shared_ptr<BatchJob> job) {
  isRenaming_ = false;
  emit isRenamingChanged();
  const Result<BatchRunner::Done, BatchRunner::Failure>& outcome = *job->outcome;
  Toast toast;
  toast.after = job->after;
  if (outcome) {
    followMoves(outcome.value().batch.moves);
    const std::int64_t count = static_cast<std::int64_t>(outcome.value().batch.moves.size());
    toast.outcome = count > 0 ? RenameOutcome::renamed : RenameOutcome::nothingChanged;
    toast.count = count;
    switch (job->after) {
      case Toast::After::rename:
        toast.text = Messages::filesRenamed(count);
        toast.offersUndo = true;
        performedBatch_ = outcome.value().batch;
        emit performedBatchChanged();
        break;
      case Toast::After::goingBack:
        toast.text = Messages::filesBackToPrevious(count);
        break;
      case Toast::After::originalNames:
        toast.text = Messages::filesBackToOriginal(count);
        break;
    }
    if (count == 0) toast.text = Messages::noFileChanged();
    if (!outcome.value().historySaved) setError(Messages::historyNotSaved());
  } else if (outcome.error().kind == BatchRunner::Failure::Kind::renamer &&
             !outcome.error().error.stranded.empty()) {
    toast.outcome = RenameOutcome::partlyStuck;
    toast.stuck = outcome.error().error.stranded;
    toast.text = Messages::someFilesStuck();
  } else {
    setError(Messages::of(outcome.error()));
  }
  if (outcome || toast.outcome == RenameOutcome::partlyStuck) {
    toast_ = std::move(toast);
    emit toastChanged();
  }
  trimAfterBatch_ = true;
  listFolders(true);
  if (outcome && job->after == Toast::After::rename && revealer_ &&
      app_.preferences().revealAfterRename()) {
    std::vector<fs::path> renamed;
    for (const FileMove& m : job->moves)
      renamed.push_back(m.destination);
    revealer_(renamed);
  }
}

// ---- Preparing ----

std::shared_ptr<FolderModel::Prepared> FolderModel::prepare(
    std::shared_ptr<const std::vector<FolderFile>> files,
    std::shared_ptr<const std::unordered_map<std::string, FolderContents>> names,
    const TwinOptions& twins, BatchOrder batchOrder) {
  auto p = std::make_shared<FolderModel::Prepared>();
  auto subjects = std::make_shared<std::vector<RenameSubject>>();
  subjects->reserve(files->size());
  std::set<std::string> bodies;
  for (const FolderFile& f : *files) {
    switch (fileKindOf(f.name.ext)) {
      case FileKind::raw:
        ++p->counts.raw;
        break;
      case FileKind::image:
        ++p->counts.images;
        break;
      case FileKind::video:
        ++p->counts.video;
        break;
      default:
        break;
    }
    if (f.bodyTag) bodies.insert(*f.bodyTag);
    if (!f.nameIsText) continue;
    RenameSubject s;
    s.name = f.name.fullName();
    s.folder = f.url.parent_path();
    s.metadata = f.metadata;
    s.cameraModel = f.cameraModel;
    s.bodyTag = f.bodyTag;
    s.captureDate = f.captureDate;
    s.originalName = f.originalName;
    subjects->push_back(std::move(s));
    p->subjectPaths.push_back(f.url);
  }
  p->counts.bodies = static_cast<std::int64_t>(bodies.size());
  p->batch = std::make_unique<PreparedBatch>(std::move(subjects), twins, batchOrder, *names);
  // Rows follow the batch order, which the rules don't change.
  const std::vector<std::size_t>& order = p->batch->order();
  p->rowOfFile.reserve(order.size());
  for (std::size_t r = 0; r < order.size(); ++r)
    p->rowOfFile.emplace(p->subjectPaths[order[r]].native(), r);
  p->files = std::move(files);
  p->names = std::move(names);
  p->twins = twins;
  p->order = batchOrder;
  return p;
}

// ---- Session ----

void FolderModel::saveSession() {
  SessionMemory(app_.settings()).save(folders_, rules_, selectedFolders_);
}

}  // namespace tessane
