#include "RenameOperation.h"

#include "JsonDecoders.h"
#include "StoredText.h"

#include <array>

namespace tessane {
namespace {

constexpr std::array<std::string_view, 21> kCaseNames{"insert",
                                                      "deleteBlock",
                                                      "deleteText",
                                                      "deleteCharacters",
                                                      "deleteBetween",
                                                      "deleteBefore",
                                                      "deleteAfter",
                                                      "replace",
                                                      "replaceRegex",
                                                      "replaceBlock",
                                                      "replaceBefore",
                                                      "replaceAfter",
                                                      "moveBlock",
                                                      "changeCase",
                                                      "collapseWhitespace",
                                                      "removeAccents",
                                                      "removeInvalidCharacters",
                                                      "truncate",
                                                      "removeEmoji",
                                                      "setExtension",
                                                      "changeExtensionCase"};
static_assert(kCaseNames.size() == std::variant_size_v<RenameOperation::Value>);

template <typename... F>
struct Overloaded : F... {
  using F::operator()...;
};
template <typename... F>
Overloaded(F...) -> Overloaded<F...>;

Json payload(std::initializer_list<std::pair<const char*, Json>> members) {
  Json object = Json::object();
  for (const auto& [key, value] : members)
    object[key] = value;
  return object;
}

}  // namespace

std::string_view RenameOperation::caseName() const {
  return kCaseNames[value.index()];
}

bool RenameOperation::touchesExtension() const {
  return std::holds_alternative<op::SetExtension>(value) ||
         std::holds_alternative<op::ChangeExtensionCase>(value);
}

namespace {
constexpr std::pair<CaseStyle, std::string_view> kCaseStyles[] = {
    {CaseStyle::upper, "upper"}, {CaseStyle::lower, "lower"}, {CaseStyle::title, "title"}};
}  // namespace

std::string_view caseName(CaseStyle style) {
  return storedText(kCaseStyles, style);
}

Json toJson(CaseStyle style) {
  return std::string(caseName(style));
}

Json toJson(const RenameOperation& operation) {
  const Json body = std::visit(
      Overloaded{
          [](const op::Insert& o) {
            return payload({{"_0", o.text}, {"at", toJson(o.at)}});
          },
          [](const op::DeleteBlock& o) {
            return payload({{"_0", toJson(o.block)}});
          },
          [](const op::DeleteText& o) {
            return payload({{"_0", toJson(o.anchor)}});
          },
          [](const op::DeleteCharacters& o) {
            return payload({{"from", o.from}, {"count", o.count}});
          },
          [](const op::DeleteBetween& o) {
            return payload(
                {{"_0", toJson(o.start)}, {"_1", toJson(o.end)}, {"inclusive", o.inclusive}});
          },
          [](const op::DeleteBefore& o) {
            return payload({{"_0", toJson(o.anchor)}, {"inclusive", o.inclusive}});
          },
          [](const op::DeleteAfter& o) {
            return payload({{"_0", toJson(o.anchor)}, {"inclusive", o.inclusive}});
          },
          [](const op::Replace& o) {
            return payload({{"_0", toJson(o.anchor)}, {"with", o.with}});
          },
          [](const op::ReplaceRegex& o) {
            return payload({{"pattern", o.pattern},
                            {"template", o.replacement},
                            {"occurrence", toJson(o.occurrence)},
                            {"caseSensitive", o.caseSensitive}});
          },
          [](const op::ReplaceBlock& o) {
            return payload({{"_0", toJson(o.block)}, {"with", o.with}});
          },
          [](const op::ReplaceBefore& o) {
            return payload({{"_0", toJson(o.anchor)}, {"with", o.with}});
          },
          [](const op::ReplaceAfter& o) {
            return payload({{"_0", toJson(o.anchor)}, {"with", o.with}});
          },
          [](const op::MoveBlock& o) {
            return payload({{"_0", toJson(o.block)}, {"toIndex", o.toIndex}});
          },
          [](const op::ChangeCase& o) {
            return payload({{"_0", toJson(o.style)}});
          },
          [](const op::CollapseWhitespace&) { return Json::object(); },
          [](const op::RemoveAccents&) { return Json::object(); },
          [](const op::RemoveInvalidCharacters& o) {
            return payload({{"replacement", o.replacement}});
          },
          [](const op::Truncate& o) {
            return payload({{"maxCharacters", o.maxCharacters}});
          },
          [](const op::RemoveEmoji&) { return Json::object(); },
          [](const op::SetExtension& o) {
            return payload({{"_0", o.ext}});
          },
          [](const op::ChangeExtensionCase& o) {
            return payload({{"_0", toJson(o.style)}});
          },
      },
      operation.value);
  return json::enumCase(operation.caseName(), body);
}

namespace json {

CaseStyle decodeCaseStyle(const Json& value, std::string_view key) {
  const std::string name = decodeString(value, key);
  if (const std::optional<CaseStyle> s = fromStoredText(kCaseStyles, name)) return *s;
  throw DecodeError(unknownCase("case style", name));
}

RenameOperation decodeOperation(const Json& value) {
  const auto [name, body] = decodeCase(value, "an operation");
  const Json& p = *body;
  auto text = [&](const char* key) { return decodeString(member(p, key), key); };
  auto integer = [&](const char* key) { return decodeInteger(member(p, key), key); };
  auto boolean = [&](const char* key) { return decodeBool(member(p, key), key); };
  auto anchor = [&](const char* key) { return decodeAnchor(member(p, key)); };
  auto block = [&](const char* key) { return decodeBlockRef(member(p, key)); };
  auto style = [&](const char* key) { return decodeCaseStyle(member(p, key), key); };

  if (name == "insert") return {op::Insert{text("_0"), decodeInsertPosition(member(p, "at"))}};
  if (name == "deleteBlock") return {op::DeleteBlock{block("_0")}};
  if (name == "deleteText") return {op::DeleteText{anchor("_0")}};
  if (name == "deleteCharacters") return {op::DeleteCharacters{integer("from"), integer("count")}};
  if (name == "deleteBetween") {
    return {op::DeleteBetween{anchor("_0"), anchor("_1"), boolean("inclusive")}};
  }
  if (name == "deleteBefore") return {op::DeleteBefore{anchor("_0"), boolean("inclusive")}};
  if (name == "deleteAfter") return {op::DeleteAfter{anchor("_0"), boolean("inclusive")}};
  if (name == "replace") return {op::Replace{anchor("_0"), text("with")}};
  if (name == "replaceRegex") {
    return {op::ReplaceRegex{text("pattern"), text("template"),
                             decodeOccurrence(member(p, "occurrence"), "occurrence"),
                             boolean("caseSensitive")}};
  }
  if (name == "replaceBlock") return {op::ReplaceBlock{block("_0"), text("with")}};
  if (name == "replaceBefore") return {op::ReplaceBefore{anchor("_0"), text("with")}};
  if (name == "replaceAfter") return {op::ReplaceAfter{anchor("_0"), text("with")}};
  if (name == "moveBlock") return {op::MoveBlock{block("_0"), integer("toIndex")}};
  if (name == "changeCase") return {op::ChangeCase{style("_0")}};
  if (name == "collapseWhitespace") return {op::CollapseWhitespace{}};
  if (name == "removeAccents") return {op::RemoveAccents{}};
  if (name == "removeInvalidCharacters") {
    return {op::RemoveInvalidCharacters{text("replacement")}};
  }
  if (name == "truncate") return {op::Truncate{integer("maxCharacters")}};
  if (name == "removeEmoji") return {op::RemoveEmoji{}};
  if (name == "setExtension") return {op::SetExtension{text("_0")}};
  if (name == "changeExtensionCase") return {op::ChangeExtensionCase{style("_0")}};
  throw DecodeError(unknownCase("operation", name));
}

}  // namespace json

Decoded<RenameOperation> decodeRenameOperation(const Json& value) {
  return json::decodeSafely<RenameOperation>([&] { return json::decodeOperation(value); });
}

}  // namespace tessane
