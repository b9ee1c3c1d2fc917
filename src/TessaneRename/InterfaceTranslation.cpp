#include "InterfaceTranslation.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace tessane {

QString InterfaceTranslation::languageCodeFor(AppLanguage language, const QLocale& system) {
  switch (language) {
    case AppLanguage::english:
      return QStringLiteral("en");
    case AppLanguage::italian:
      return QStringLiteral("it");
    case AppLanguage::system:
      break;
  }
  // "it-IT", "it", "en-US"…: the first one spoken here wins.
  for (const QString& preferred : system.uiLanguages()) {
    const QString code = preferred.section(QLatin1Char('-'), 0, 0).toLower();
    if (code == QLatin1String("it") || code == QLatin1String("en")) return code;
  }
  return QStringLiteral("en");
}

QString InterfaceTranslation::title(AppLanguage language) {
  switch (language) {
    case AppLanguage::system:
      return QCoreApplication::translate("InterfaceTranslation", "System language");
    case AppLanguage::english:
      return QStringLiteral("English");
    case AppLanguage::italian:
      return QStringLiteral("Italiano");
  }
  return {};
}

InterfaceTranslation::InterfaceTranslation(AppLanguage language, const QLocale& system)
    : code_(languageCodeFor(language, system)), previousDefault_(QLocale()) {
  if (language != AppLanguage::system && system.language() != QLocale(code_).language()) {
    QLocale::setDefault(QLocale(code_));
  }
  if (code_ == QLatin1String("en")) {
    hasQtTexts_ = true;  // the source language of both
    return;
  }
  own_ = std::make_unique<QTranslator>();
  if (own_->load(QStringLiteral(":/i18n/tessane_") + code_)) {
    QCoreApplication::installTranslator(own_.get());
  } else {
    own_.reset();
  }
  qt_ = std::make_unique<QTranslator>();
  if (qt_->load(QLocale(code_), QStringLiteral("qtbase"), QStringLiteral("_"),
                QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QCoreApplication::installTranslator(qt_.get());
    hasQtTexts_ = true;
  } else {
    qt_.reset();
  }
}

InterfaceTranslation::~InterfaceTranslation() {
  if (own_) QCoreApplication::removeTranslator(own_.get());
  if (qt_) QCoreApplication::removeTranslator(qt_.get());
  QLocale::setDefault(previousDefault_);
}

}  // namespace tessane
