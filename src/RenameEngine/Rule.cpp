#include "Rule.h"

#include "FileName.h"
#include "JsonDecoders.h"
#include "Unicode.h"

namespace tessane {
namespace {

std::string extensionKey(std::string_view text) {
  std::string s = unicode::toLower(unicode::toNfc(text));
  s.erase(0, s.find_first_not_of('.') == std::string::npos ? s.size() : s.find_first_not_of('.'));
  return s;
}

}  // namespace

std::string_view RuleAction::caseName() const {
  static constexpr std::string_view kNames[] = {"operation", "protect", "counter", "format"};
  return kNames[value.index()];
}

std::string_view RuleCondition::caseName() const {
  static constexpr std::string_view kNames[] = {"kind", "fileExtension", "cameraModel", "bodyTag",
                                                "nameContains"};
  return kNames[value.index()];
}

RuleConditions::RuleConditions(const std::vector<RuleCondition>& conditions)
    : conditions_(conditions), extensions_(conditions.size()), folded_(conditions.size()) {
  for (std::size_t i = 0; i < conditions_.size(); ++i) {
    const auto& c = conditions_[i].value;
    if (const auto* e = std::get_if<RuleCondition::FileExtension>(&c)) {
      for (const std::string& ext : e->extensions)
        extensions_[i].push_back(extensionKey(ext));
    } else if (const auto* m = std::get_if<RuleCondition::CameraModel>(&c)) {
      folded_[i] = unicode::foldCase(unicode::toNfc(m->model));
    } else if (const auto* t = std::get_if<RuleCondition::BodyTag>(&c)) {
      folded_[i] = unicode::foldCase(unicode::toNfc(t->tag));
    } else if (const auto* n = std::get_if<RuleCondition::NameContains>(&c)) {
      finders_.emplace_back(n->anchor);
    }
  }
}

bool RuleConditions::hold(const RenameSubject& subject) const {
  if (conditions_.empty()) return true;
  const FileName name = FileName::parse(subject.name);
  std::size_t finder = 0;
  auto sameFolded = [](const std::optional<std::string>& value, const std::string& folded) {
    return value && unicode::foldCase(unicode::toNfc(*value)) == folded;
  };
  for (std::size_t i = 0; i < conditions_.size(); ++i) {
    const auto& c = conditions_[i].value;
    bool holds = false;
    if (const auto* k = std::get_if<RuleCondition::Kind>(&c)) {
      holds = k->kinds.count(name.kind()) > 0;
    } else if (std::holds_alternative<RuleCondition::FileExtension>(c)) {
      const std::string ext = name.lowerExt();
      for (const std::string& wanted : extensions_[i])
        holds = holds || wanted == ext;
    } else if (std::holds_alternative<RuleCondition::CameraModel>(c)) {
      holds = sameFolded(subject.cameraModel, folded_[i]);
    } else if (std::holds_alternative<RuleCondition::BodyTag>(c)) {
      holds = sameFolded(subject.bodyTag, folded_[i]);
    } else {
      holds = !finders_[finder++].hits(LocatedName(subject.name)).empty();
    }
    if (!holds) return false;
  }
  return true;
}

Json toJson(const RuleAction& action) {
  Json payload = std::visit(
      [](const auto& a) -> Json {
        using T = std::decay_t<decltype(a)>;
        if constexpr (std::is_same_v<T, RuleAction::Operation>) return toJson(a.operation);
        if constexpr (std::is_same_v<T, RuleAction::Protect>) return toJson(a.block);
        if constexpr (std::is_same_v<T, RuleAction::Numbering>) return toJson(a.counter);
        if constexpr (std::is_same_v<T, RuleAction::Format>) return toJson(a.format);
      },
      action.value);
  return json::enumCase(action.caseName(), Json{{"_0", std::move(payload)}});
}

Json toJson(const RuleCondition& condition) {
  Json payload = std::visit(
      [](const auto& c) -> Json {
        using T = std::decay_t<decltype(c)>;
        if constexpr (std::is_same_v<T, RuleCondition::Kind>) {
          Json kinds = Json::array();
          for (FileKind k : c.kinds)
            kinds.push_back(std::string(rawValue(k)));
          return kinds;
        }
        if constexpr (std::is_same_v<T, RuleCondition::FileExtension>) return c.extensions;
        if constexpr (std::is_same_v<T, RuleCondition::CameraModel>) return c.model;
        if constexpr (std::is_same_v<T, RuleCondition::BodyTag>) return c.tag;
        if constexpr (std::is_same_v<T, RuleCondition::NameContains>) return toJson(c.anchor);
      },
      condition.value);
  return json::enumCase(condition.caseName(), Json{{"_0", std::move(payload)}});
}

Json toJson(const Rule& rule) {
  Json conditions = Json::array();
  for (const RuleCondition& c : rule.conditions)
    conditions.push_back(toJson(c));
  return Json{{"action", toJson(rule.action)},
              {"conditions", std::move(conditions)},
              {"id", rule.id.string()},
              {"isEnabled", rule.isEnabled}};
}

namespace json {

RuleAction decodeRuleAction(const Json& value) {
  const auto [name, payload] = decodeCase(value, "a rule action");
  const Json& body = member(*payload, "_0");
  if (name == "operation") return {RuleAction::Operation{decodeOperation(body)}};
  if (name == "protect") return {RuleAction::Protect{decodeBlockRef(body)}};
  if (name == "counter") return {RuleAction::Numbering{decodeCounter(body)}};
  if (name == "format") return {RuleAction::Format{decodeNameFormat(body)}};
  throw DecodeError(unknownCase("rule action", name));
}

RuleCondition decodeRuleCondition(const Json& value) {
  const auto [name, payload] = decodeCase(value, "a rule condition");
  const Json& body = member(*payload, "_0");
  auto strings = [&] {
    if (!body.is_array()) throw DecodeError("Expected a list under “_0”.");
    std::vector<std::string> out;
    for (const Json& item : body)
      out.push_back(decodeString(item, "_0"));
    return out;
  };
  if (name == "kind") {
    std::set<FileKind> kinds;
    for (const std::string& text : strings()) {
      const auto kind = fileKindFromRawValue(text);
      if (!kind) throw DecodeError(unknownCase("file kind", text));
      kinds.insert(*kind);
    }
    return {RuleCondition::Kind{std::move(kinds)}};
  }
  if (name == "fileExtension") return {RuleCondition::FileExtension{strings()}};
  if (name == "cameraModel") return {RuleCondition::CameraModel{decodeString(body, "_0")}};
  if (name == "bodyTag") return {RuleCondition::BodyTag{decodeString(body, "_0")}};
  if (name == "nameContains") return {RuleCondition::NameContains{decodeAnchor(body)}};
  throw DecodeError(unknownCase("rule condition", name));
}

Rule decodeRule(const Json& value) {
  if (!value.is_object()) throw DecodeError("Expected an object for a rule.");
  Rule rule;
  rule.action = decodeRuleAction(member(value, "action"));
  if (value.contains("id")) {
    const std::string text = decodeString(value["id"], "id");
    const std::optional<Uuid> id = Uuid::parse(text);
    if (!id) throw DecodeError(std::string("“").append(text).append("” is not a valid rule id."));
    rule.id = *id;
  }
  if (value.contains("conditions")) {
    const Json& conditions = value["conditions"];
    if (!conditions.is_array()) throw DecodeError("Expected a list for “conditions”.");
    for (const Json& c : conditions)
      rule.conditions.push_back(decodeRuleCondition(c));
  }
  if (value.contains("isEnabled")) rule.isEnabled = decodeBool(value["isEnabled"], "isEnabled");
  return rule;
}

}  // namespace json
}  // namespace tessane
