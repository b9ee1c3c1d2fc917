// The look of every window: Qt's Fusion style with a light or a dark palette, set on the whole
// application so that each window, dialog and menu follows. "system" follows the desktop's colour
// scheme: the freedesktop settings portal's "color-scheme" (which GNOME, KDE and most desktops
// publish), else the palette the platform gave the application at start, else light. While
// "system" is chosen, a change of the desktop's scheme is followed at once.
#pragma once

#include <QObject>
#include <QPalette>

#include <optional>

#include "TessaneRename/Preferences.h"

class QDBusVariant;

namespace tessane {

QPalette lightPalette();
QPalette darkPalette();

// Text that states a problem (a refused value, a failed import): red that reads on light and dark.
void showAsProblem(QWidget* label, bool isProblem);
// A heading's weight, without a style sheet (which would pin the widget's palette).
void makeBold(QWidget* label);

class AppearanceStyle : public QObject {
  Q_OBJECT

 public:
  // `askDesktop`: whether the desktop's settings portal is asked (tests leave it out).
  explicit AppearanceStyle(bool askDesktop = true, QObject* parent = nullptr);

  void apply(Appearance appearance);
  Appearance appearance() const { return appearance_; }
  bool isDark() const { return dark_; }

  // The portal's answer: true for dark, false for light, nullopt when it has no preference or
  // isn't there.
  static std::optional<bool> desktopPrefersDark();

 signals:
  void changed();

 private slots:
  void desktopSettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

 private:
  bool systemIsDark() const;
  void setDark(bool dark);

  bool askDesktop_;
  bool startedDark_;  // the platform's own palette at start was a dark one
  std::optional<bool> desktopDark_;
  Appearance appearance_ = Appearance::system;
  bool dark_ = false;
};

}  // namespace tessane
