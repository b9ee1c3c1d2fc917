// The spine of a main window: the folders in its list, the files they hold with their shooting
// data, the rules being built, the preview made from them, the user's ticks and selection, and a
// rename under way. It turns gestures (open, tick, choose a scope, Rename, Undo, Restore Original
// Names) into calls on the workflow and the texts a window shows.
//
// Confined to the thread that made it (the main thread): every property changes there and says so
// through its signal. Slow work runs on the model's own thread pool and comes back through the
// event loop: listing, reading metadata, building the preview (each build tagged with a
// generation; only the newest is published, whatever order builds finish in) and moving files
// (one batch at a time, while `isRenaming`). Failures end in `errorMessage`, never in an
// exception. Destroying the model stops its tasks and waits for them.
#pragma once

#include <QObject>
#include <QThreadPool>

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <stop_token>
#include <string>
#include <unordered_map>
#include <vector>

#include "RenameEngine/RenamePreview.h"
#include "RenameIO/AppliedBatch.h"
#include "TessaneRename/AppContext.h"
#include "TessaneRename/BatchRunner.h"

namespace tessane {

// One listed file.
struct FolderFile {
  std::filesystem::path url;  // its path, the folder resolved
  FileName name;
  MetadataMap metadata;                     // empty until the metadata task has read it
  std::filesystem::path primaryURL;         // the file whose name it follows, else its own path
  std::optional<std::string> originalName;  // the camera's name remembered in the file
  std::optional<std::string> bodyTag;
  std::optional<Date> captureDate;  // corrected by the camera-body table
  std::optional<std::string> cameraModel;
  bool nameIsText = true;  // false: shown with a warning, never renamed
};

enum class RenameScope { all, selected };
enum class RenameOutcome { renamed, nothingChanged, partlyStuck };

struct ListFilter {
  std::set<FileKind> kinds;
  std::set<std::string> bodyTags;
  std::set<PreviewStatus> statuses;
  std::string search;  // matched, ignoring case, against the current and the new name
};

struct FileCounts {
  std::int64_t raw = 0, images = 0, video = 0, warnings = 0, errors = 0, bodies = 0;
  friend bool operator==(const FileCounts&, const FileCounts&) = default;
};

struct Toast {
  enum class After { rename, goingBack, originalNames };
  Uuid id = Uuid::random();
  RenameOutcome outcome = RenameOutcome::renamed;
  After after = After::rename;
  std::int64_t count = 0;
  std::vector<FileMove> stuck;  // partlyStuck: from where each file is to where it belongs
  bool offersUndo = false;
  std::string text;  // the toast's first line
};

class FolderModel : public QObject {
  Q_OBJECT
  Q_PROPERTY(QString errorMessage READ errorMessageText NOTIFY errorMessageChanged)
  Q_PROPERTY(int previewBuildCount READ previewBuildCount NOTIFY previewBuildCountChanged)
  Q_PROPERTY(bool isRenaming READ isRenaming NOTIFY isRenamingChanged)
  Q_PROPERTY(bool canRename READ canRename NOTIFY previewChanged)

 public:
  // Reveals renamed files in the file manager; the application hands in the desktop's, tests a
  // recorder. Without one nothing is revealed.
  using Revealer = std::function<void(const std::vector<std::filesystem::path>&)>;

  explicit FolderModel(AppContext& app, QObject* parent = nullptr);
  ~FolderModel() override;

  void setRevealer(Revealer revealer) { revealer_ = std::move(revealer); }

  // Properties, each with its change signal below.
  const std::optional<std::filesystem::path>& folder() const { return folder_; }
  const std::vector<FolderFile>& files() const { return *files_; }
  const std::optional<std::string>& errorMessage() const { return errorMessage_; }
  QString errorMessageText() const;
  const RenamePreview* preview() const { return preview_ ? &*preview_ : nullptr; }
  // The text the preview put in place of missing values, for its warnings' messages.
  const std::string& previewMissingText() const { return previewMissingText_; }
  int previewBuildCount() const { return previewBuildCount_; }
  const RuleStack& rules() const { return rules_; }
  const TwinOptions& twinOptions() const { return twinOptions_; }
  RenameScope scope() const { return scope_; }
  const std::set<std::filesystem::path>& selection() const { return selection_; }
  const std::set<std::filesystem::path>& checked() const { return checked_; }
  // The window's filter: with the scope "all", the files it shows are the batch.
  const ListFilter& filter() const { return filter_; }
  BatchOrder order() const { return order_; }
  DuplicatePolicy duplicates() const { return duplicates_; }
  const std::vector<std::filesystem::path>& folders() const { return folders_; }
  const std::set<std::filesystem::path>& selectedFolders() const { return selectedFolders_; }
  bool isRenaming() const { return isRenaming_; }
  // True from a listing until the shooting data of its files is read: Rename waits for it, so
  // that no file is named without its date.
  bool isReading() const { return isReading_; }
  // Nothing under way: the preview shown is of the files as listed and read, and no listing,
  // reading, build or batch is running.
  bool isSettled() const;
  const std::optional<std::filesystem::path>& folderAccessNeeded() const { return accessNeeded_; }
  const std::set<std::filesystem::path>& pendingTicks() const { return pendingTicks_; }
  const std::vector<FolderFile>& previewSources() const { return *previewSources_; }
  const std::vector<std::filesystem::path>& droppedURLs() const { return droppedURLs_; }
  std::uint64_t previewGeneration() const { return previewGeneration_; }
  const std::vector<std::filesystem::path>& shownFolders() const { return shownFolders_; }
  const std::optional<AppliedBatch>& performedBatch() const { return performedBatch_; }
  const std::optional<Toast>& toast() const { return toast_; }
  RenameHistory& history() { return app_.history(); }
  BodyTable& bodies() { return app_.bodies(); }
  const CameraBodies& cameraBodies() const { return app_.bodies().bodies(); }
  // A file's own shooting data. A twin's names come from its primary's values (which is what
  // `metadata` holds for it); its own are read from the file the first time they are asked
  // for, and kept until the files are read again.
  const MetadataMap& ownMetadata(const FolderFile& file) const;

  // At start: the folders and the rules of the last session, when the user wants them back.
  void resumeSession();
  // At start: what the crash journal's recovery did, shown as the window's message.
  void showRecovery(const RecoveryReport& report);

  // Opening: folders join the list and are selected; single files tick themselves in their
  // folder, which joins the list. The same folder or file given twice counts once.
  void open(const std::vector<std::filesystem::path>& urls);
  void removeFolder(const std::filesystem::path& folder);
  void selectFolders(const std::set<std::filesystem::path>& folders);
  // The sidebar's title for the selection: the folder's name, or "3 folders selected".
  std::string selectionTitle() const;

  // Ticking a file ticks its twins with it (the other files of its shot), so that a shot is
  // never split by a tick; several files tick in one gesture.
  void setTicked(const std::filesystem::path& file, bool ticked);
  void setTicked(const std::vector<std::filesystem::path>& files, bool ticked);
  // Ticks the twins of every ticked file that left some of its shot out.
  void tickWholeShots();
  void setScope(RenameScope scope);
  void setFilter(ListFilter filter);
  void setSelection(std::set<std::filesystem::path> selection);

  // Each restarts the preview.
  void setRules(RuleStack rules);
  void setTwinOptions(TwinOptions options);
  void setOrder(BatchOrder order);
  void setDuplicates(DuplicatePolicy policy);
  void settingsChanged();  // preferences or the body table changed

  // The batches. Each refuses with a message in `errorMessage` and moves nothing:
  //   rename: no preview, or a batch under way: "There’s nothing to rename."; the shooting data
  //     still being read: "The shooting data is still being read: …"; a row with an error: "Fix
  //     the errors before renaming."; no file in the scope whose name changes: "There’s nothing
  //     to rename." Otherwise the scope's moves run; the outcome is a toast, or the safe renamer's
  //     refusal as a message ("Couldn’t rename “x”: the disk is full. Nothing was changed.").
  //   undo: a batch under way, or nothing left to go back from: "There’s nothing to undo."
  //   revert: an unknown entry, or one already gone back from, says so; a folder of the entry
  //     (or of a later entry in its way) not in the list: "Add the folder to the list to go back."
  //   restoreOriginalNames: a batch under way: "There’s nothing to rename."; no file in the scope
  //     with a remembered name other than its own: "These files already have their original
  //     names." The names are read from the files when it is asked (after a listing under way).
  void rename();
  // Goes back from the newest batch, not gone back from, whose folders are all in the list.
  void undo();
  // Goes back from an entry, and first from the later ones in its way (the history's
  // goingBackChain), as one batch; the window asks before going back through later entries.
  void revert(const Uuid& entry);
  void restoreOriginalNames();
  // Selects the first row whose status is an error; its file, or nullopt when there is none.
  std::optional<std::filesystem::path> goToFirstError();
  void dismissError();
  void dismissToast();

  // Queries for the views.
  std::vector<const FolderFile*> visibleFiles(const ListFilter& filter) const;
  FileCounts fileCounts() const;
  const PlannedRename* previewRow(const std::filesystem::path& file) const;
  // Whether a file is in the batch that Rename would make: under the scope "all", every file
  // shown and the twins of those shown; under "selected", the ticked files.
  bool isInScope(const std::filesystem::path& file) const;
  // The files in the batch whose names change, and the shots of it that are split: a file in
  // the batch with a twin outside it (its row warns of it).
  std::int64_t filesToRename() const { return scopeInfo_.changed; }
  std::int64_t splitShots() const { return scopeInfo_.split; }
  bool canRename() const;

  // Tests: called on the building thread before a preview build of `generation` starts.
  void setBeforeBuildForTesting(std::function<void(std::uint64_t generation)> hook);

 signals:
  void folderChanged();
  void filesChanged();
  void errorMessageChanged();
  void previewChanged();
  void previewBuildCountChanged();
  void rulesChanged();
  void twinOptionsChanged();
  void scopeChanged();
  void selectionChanged();
  void checkedChanged();
  void orderChanged();
  void duplicatesChanged();
  void foldersChanged();
  void selectedFoldersChanged();
  void isRenamingChanged();
  void folderAccessNeededChanged();
  void pendingTicksChanged();
  void toastChanged();
  void metadataProgress(qint64 done, qint64 total);
  void isReadingChanged();
  void filterChanged();
  void performedBatchChanged();

 private:
  struct Listing;
  struct Prepared;
  struct Built;
  struct BatchJob;

  void setError(std::optional<std::string> message);
  void listFolders(bool again);
  void showListing(std::shared_ptr<Listing> listing);
  void startMetadata();
  void schedulePreview();
  void startPreview();
  void publishPreview(std::shared_ptr<Built> built);
  static std::shared_ptr<Prepared> prepare(
      std::shared_ptr<const std::vector<FolderFile>> files,
      std::shared_ptr<const std::unordered_map<std::string, FolderContents>> names,
      const TwinOptions& twins, BatchOrder order);
  void saveSession();
  void open(const std::vector<std::filesystem::path>& urls,
            const std::set<std::filesystem::path>* selectOnly);
  void setReading(bool reading);
  // Works out the scope over the shown preview again and marks the rows whose shot it splits.
  void updateScope();
  std::vector<std::filesystem::path> withTwins(
      const std::vector<std::filesystem::path>& files) const;
  void runBatch(std::vector<FileMove> moves, RenameHistory::Kind kind, Toast::After after,
                std::vector<RenameHistory::Entry> goingBackChain);
  void finishBatch(std::shared_ptr<BatchJob> job);
  void followMoves(const std::vector<FileMove>& moves);
  std::vector<bool> scopeOf(const std::vector<FolderFile>& files) const;
  // Hands a big value that is no longer needed to a worker, so that freeing it (tens of
  // thousands of rows) doesn't hold up the main thread.
  template <typename T>
  void retire(T&& old);
  void startTask(std::function<void()> task);

  AppContext& app_;
  QThreadPool pool_;
  Revealer revealer_;
  std::function<void(std::uint64_t)> beforeBuild_;

  std::optional<std::filesystem::path> folder_;
  std::shared_ptr<const std::vector<FolderFile>> files_;
  mutable std::unordered_map<std::string, MetadataMap> ownMetadata_;  // twins', by path
  std::optional<std::string> errorMessage_;
  std::optional<RenamePreview> preview_;
  int previewBuildCount_ = 0;
  RuleStack rules_;
  TwinOptions twinOptions_;
  RenameScope scope_ = RenameScope::all;
  std::set<std::filesystem::path> selection_;
  std::set<std::filesystem::path> checked_;
  BatchOrder order_ = BatchOrder::captureTime;
  DuplicatePolicy duplicates_ = DuplicatePolicy::markError;
  std::vector<std::filesystem::path> folders_;
  std::set<std::filesystem::path> selectedFolders_;
  bool isRenaming_ = false;
  bool isReading_ = false;
  ListFilter filter_;
  std::optional<std::filesystem::path> accessNeeded_;
  std::set<std::filesystem::path> pendingTicks_;
  std::shared_ptr<const std::vector<FolderFile>> previewSources_;
  std::vector<std::filesystem::path> droppedURLs_;
  std::uint64_t previewGeneration_ = 0;
  std::map<std::filesystem::path, std::shared_ptr<const std::vector<FolderFile>>> folderContents_;
  // Every name in each listed folder, for the clash checks; replaced, never changed in place, so
  // that builds can share it.
  std::shared_ptr<const std::unordered_map<std::string, FolderContents>> folderNames_;
  std::vector<std::filesystem::path> shownFolders_;
  std::optional<AppliedBatch> performedBatch_;
  std::optional<Toast> toast_;

  // What the shown preview was built over: kept while only the rules change, so that an edit
  // rebuilds only what the rules make. It holds each subject's file and each file's row.
  std::shared_ptr<const Prepared> prepared_;
  FileCounts counts_;  // made with the preview
  std::string previewMissingText_;
  // The scope over the shown preview: per subject whether it is in the batch, and per row how many
  // warnings the preview itself gave it (those after them are the scope's).
  struct ScopeInfo {
    std::vector<bool> subjectInScope;
    std::vector<std::uint8_t> ownWarnings;
    std::int64_t changed = 0, split = 0;
  } scopeInfo_;

  std::uint64_t listingGeneration_ = 0;
  bool listingUnderWay_ = false;
  bool restoreWaitsForListing_ = false;
  bool trimAfterBatch_ = false;
  std::uint64_t metadataGeneration_ = 0;
  std::stop_source metadataStop_;
  bool previewScheduled_ = false;
  std::set<std::filesystem::path> temporaryNamesChecked_;
};

}  // namespace tessane
