// The clock-sync card: two photos of one instant, taken by two camera bodies, line up the wrong
// camera's clock with the right one's. The card's state says what the two selected files allow;
// `apply` stores the offset in the body table (Settings › Camera Bodies) and has the folder model
// read the corrected times, and gives the result line and the note that the card shows. The
// files themselves are never changed.
#pragma once

#include <QString>

#include <optional>

namespace tessane {

class FolderModel;
struct FolderFile;

class ClockSync {
 public:
  enum class State {
    chooseTwo,  // not exactly two files selected
    sameBody,   // both come from one camera
    noBody,     // a file without a serial number or model
    noTime,     // a file without a capture time
    ready,
  };

  struct Photo {
    QString name;  // the file's name
    QString body;  // its body's tag, else its key
    QString time;  // its capture time as recorded, not corrected
  };

  struct Result {
    QString line;  // "B clock: +0:02:00", or "B was already in time"
    QString note;  // where the offset went
    double offset = 0;
    friend bool operator==(const Result&, const Result&) = default;
  };

  static State stateOf(const FolderFile* a, const FolderFile* b);
  // What the card says in each state: the explanation that invites the user to choose.
  static QString explanation(State state);
  static Photo photoOf(FolderModel& model, const FolderFile& file);

  // The camera of `right` has the right time; nullopt (and nothing changed) unless ready.
  static std::optional<Result> apply(FolderModel& model, const FolderFile& right,
                                     const FolderFile& wrong);
};

}  // namespace tessane
