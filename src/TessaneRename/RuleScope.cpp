#include "RuleScope.h"

#include <QCoreApplication>

#include "RenameEngine/Unicode.h"

namespace tessane {
namespace {

const std::vector<std::string>& jpegExtensions() {
  static const std::vector<std::string> list{"jpg", "jpeg"};
  return list;
}

}  // namespace

std::vector<RuleCondition> RuleScope::conditions() const {
  switch (kind) {
    case Kind::all:
      return {};
    case Kind::raw:
      return {RuleCondition{RuleCondition::Kind{{FileKind::raw}}}};
    case Kind::jpeg:
      return {RuleCondition{RuleCondition::FileExtension{jpegExtensions()}}};
    case Kind::video:
      return {RuleCondition{RuleCondition::Kind{{FileKind::video}}}};
    case Kind::body:
      return {RuleCondition{RuleCondition::BodyTag{text}}};
    case Kind::nameContains:
      return {RuleCondition{
          RuleCondition::NameContains{Anchor{unicode::toNfc(text), false, Occurrence::first}}}};
  }
  return {};
}

std::optional<RuleScope> RuleScope::of(const std::vector<RuleCondition>& conditions) {
  if (conditions.empty()) return all();
  if (conditions.size() != 1) return std::nullopt;
  const auto& value = conditions.front().value;
  if (const auto* k = std::get_if<RuleCondition::Kind>(&value)) {
    if (k->kinds == std::set<FileKind>{FileKind::raw}) return raw();
    if (k->kinds == std::set<FileKind>{FileKind::video}) return video();
    return std::nullopt;
  }
  if (const auto* e = std::get_if<RuleCondition::FileExtension>(&value)) {
    if (e->extensions == jpegExtensions()) return jpeg();
    return std::nullopt;
  }
  if (const auto* b = std::get_if<RuleCondition::BodyTag>(&value)) return body(b->tag);
  if (const auto* n = std::get_if<RuleCondition::NameContains>(&value)) {
    const Anchor& a = n->anchor;
    if (a.caseSensitive || a.occurrence != Occurrence::first || !unicode::isNfc(a.text))
      return std::nullopt;
    return nameContains(a.text);
  }
  return std::nullopt;  // a camera model
}

QString RuleScope::title() const {
  switch (kind) {
    case Kind::all:
      return QCoreApplication::translate("RuleScope", "All files");
    case Kind::raw:
      return QCoreApplication::translate("RuleScope", "RAW files");
    case Kind::jpeg:
      return QCoreApplication::translate("RuleScope", "JPEG files");
    case Kind::video:
      return QCoreApplication::translate("RuleScope", "Videos");
    case Kind::body:
      return QCoreApplication::translate("RuleScope", "Camera body “%1”")
          .arg(QString::fromStdString(text));
    case Kind::nameContains:
      return QCoreApplication::translate("RuleScope", "Names containing “%1”")
          .arg(QString::fromStdString(text));
  }
  return {};
}

}  // namespace tessane
