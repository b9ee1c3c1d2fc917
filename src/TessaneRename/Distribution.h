// What the builder of this copy of the application decided (CMake cache variables, all empty by
// default): the address of the signed update feed and its public key, the mail address that
// problem reports go to, the web site, and the build number shown beside the version. The
// application reaches no address that is not given here: without a feed there is no update check
// at all, without a report address a report is saved or copied, without a web site there is no
// Website command.
#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

namespace tessane {

struct Distribution {
  QUrl updateFeed;        // empty: no update check, no command, no setting
  QByteArray updateKey;   // the feed's Ed25519 public key (32 bytes)
  QString reportAddress;  // empty: reports are saved or copied, not mailed
  QUrl website;           // empty: no Website command
  QString buildNumber;    // "412"

  bool checksForUpdates() const { return !updateFeed.isEmpty() && updateKey.size() == 32; }
  bool mailsReports() const { return !reportAddress.isEmpty(); }

  // What this build was configured with.
  static const Distribution& ofThisBuild();
};

// The licence, as an SPDX identifier.
inline constexpr const char* kLicenseName = "GPL-3.0-or-later";

}  // namespace tessane
