#include "TessaneRename/Windows/Appearance.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QPainter>
#include <QProxyStyle>
#include <QStyle>
#include <QStyleFactory>
#include <QStyleOption>
#include <QWidget>

namespace tessane {
namespace {

constexpr const char* kPortalService = "org.freedesktop.portal.Desktop";
constexpr const char* kPortalPath = "/org/freedesktop/portal/desktop";
constexpr const char* kPortalSettings = "org.freedesktop.portal.Settings";
constexpr const char* kAppearanceGroup = "org.freedesktop.appearance";
constexpr const char* kColorScheme = "color-scheme";

// The portal's value: 1 prefers dark, 2 prefers light, 0 has no preference.
std::optional<bool> schemeIsDark(const QVariant& value) {
  QVariant v = value;
  // Read answers with a variant wrapped in a variant.
  while (v.canConvert<QDBusVariant>() && v.userType() == qMetaTypeId<QDBusVariant>()) {
    v = v.value<QDBusVariant>().variant();
  }
  bool ok = false;
  const uint scheme = v.toUInt(&ok);
  if (!ok || scheme == 0) return std::nullopt;
  return scheme == 1;
}

// Fusion draws the frame of a tick box a shade darker than the window, which vanishes on a dark
// palette: there the frame is drawn again in a light grey so that every tick box can be seen.
class VisibleTicks : public QProxyStyle {
 public:
  VisibleTicks() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool tick = element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck;
    if (!tick || option->palette.color(QPalette::Window).lightness() >= 128) return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, true);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(option->palette.color(QPalette::Mid).lighter(150), 1));
    const QRectF frame = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    painter->drawRoundedRect(frame, 2, 2);
    painter->restore();
  }
};

}  // namespace

QPalette lightPalette() {
  static QStyle* fusion = QStyleFactory::create(QStringLiteral("Fusion"));
  QPalette p = fusion->standardPalette();
  p.setColor(QPalette::Highlight, QColor(0x2a, 0x6f, 0xd1));
  p.setColor(QPalette::Link, QColor(0x1f, 0x5f, 0xbf));
  return p;
}

QPalette darkPalette() {
  QPalette p;
  const QColor window(0x30, 0x30, 0x34), base(0x1e, 0x1e, 0x21), text(0xe8, 0xe8, 0xea);
  const QColor button(0x3c, 0x3c, 0x41), dim(0x86, 0x86, 0x8c);
  p.setColor(QPalette::Window, window);
  p.setColor(QPalette::WindowText, text);
  p.setColor(QPalette::Base, base);
  p.setColor(QPalette::AlternateBase, QColor(0x26, 0x26, 0x29));
  p.setColor(QPalette::ToolTipBase, QColor(0x3a, 0x3a, 0x3e));
  p.setColor(QPalette::ToolTipText, text);
  p.setColor(QPalette::PlaceholderText, dim);
  p.setColor(QPalette::Text, text);
  p.setColor(QPalette::Button, button);
  p.setColor(QPalette::ButtonText, text);
  p.setColor(QPalette::BrightText, QColor(0xff, 0x6b, 0x6b));
  p.setColor(QPalette::Light, QColor(0x4a, 0x4a, 0x4f));
  p.setColor(QPalette::Midlight, QColor(0x40, 0x40, 0x44));
  p.setColor(QPalette::Mid, QColor(0x5c, 0x5c, 0x62));
  p.setColor(QPalette::Dark, QColor(0x1a, 0x1a, 0x1c));
  p.setColor(QPalette::Shadow, QColor(0x0e, 0x0e, 0x10));
  p.setColor(QPalette::Highlight, QColor(0x2f, 0x6f, 0xca));
  p.setColor(QPalette::HighlightedText, Qt::white);
  p.setColor(QPalette::Link, QColor(0x7a, 0xb8, 0xff));
  p.setColor(QPalette::LinkVisited, QColor(0xb4, 0x9c, 0xff));
  for (QPalette::ColorRole role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText}) {
    p.setColor(QPalette::Disabled, role, dim);
  }
  p.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0x45, 0x45, 0x4a));
  p.setColor(QPalette::Disabled, QPalette::Button, QColor(0x30, 0x30, 0x33));
  return p;
}

void showAsProblem(QWidget* label, bool isProblem) {
  QPalette p = label->palette();
  if (isProblem) {
    p.setColor(QPalette::WindowText, QColor(0xd7, 0x3a, 0x3a));
    label->setPalette(p);
  } else {
    label->setPalette(QPalette());
  }
}

void makeBold(QWidget* label) {
  QFont font = label->font();
  font.setBold(true);
  label->setFont(font);
}

AppearanceStyle::AppearanceStyle(bool askDesktop, QObject* parent)
    : QObject(parent),
      askDesktop_(askDesktop),
      startedDark_(QApplication::palette().color(QPalette::Window).lightness() < 128) {
  QApplication::setStyle(new VisibleTicks);
  if (!askDesktop_) return;
  desktopDark_ = desktopPrefersDark();
  QDBusConnection::sessionBus().connect(
      kPortalService, kPortalPath, kPortalSettings, QStringLiteral("SettingChanged"), this,
      SLOT(desktopSettingChanged(QString, QString, QDBusVariant)));
}

std::optional<bool> AppearanceStyle::desktopPrefersDark() {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return std::nullopt;
  QDBusMessage read = QDBusMessage::createMethodCall(kPortalService, kPortalPath, kPortalSettings,
                                                     QStringLiteral("Read"));
  read << QString::fromLatin1(kAppearanceGroup) << QString::fromLatin1(kColorScheme);
  // A desktop without the portal answers at once; a slow one doesn't hold up the start.
  const QDBusMessage reply = bus.call(read, QDBus::Block, 500);
  if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
    return std::nullopt;
  }
  return schemeIsDark(reply.arguments().constFirst());
}

void AppearanceStyle::desktopSettingChanged(const QString& group, const QString& key,
                                            const QDBusVariant& value) {
  if (group != QLatin1String(kAppearanceGroup) || key != QLatin1String(kColorScheme)) return;
  desktopDark_ = schemeIsDark(value.variant());
  if (appearance_ == Appearance::system) setDark(systemIsDark());
}

bool AppearanceStyle::systemIsDark() const {
  return desktopDark_.value_or(startedDark_);
}

void AppearanceStyle::apply(Appearance appearance) {
  appearance_ = appearance;
  switch (appearance) {
    case Appearance::light:
      setDark(false);
      break;
    case Appearance::dark:
      setDark(true);
      break;
    case Appearance::system:
      setDark(systemIsDark());
      break;
  }
}

void AppearanceStyle::setDark(bool dark) {
  dark_ = dark;
  QApplication::setPalette(dark ? darkPalette() : lightPalette());
  emit changed();
}

}  // namespace tessane
