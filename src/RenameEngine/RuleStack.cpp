#include "RuleStack.h"

#include <unicode/timezone.h>

#include "DateFormatterCache.h"
#include "JsonDecoders.h"
#include "NameKey.h"
#include "Parallel.h"
#include "Template.h"
#include "Unicode.h"

namespace tessane {

struct CompiledRuleStack::Compiled {
  struct CompiledRule {
    const Rule* rule;
    RuleConditions conditions;
    std::optional<CompiledOperation> operation;  // operation rules; the insert of counter rules
    std::optional<PreparedTemplate> parsed;      // format rules
  };
  RuleStack stack;
  std::shared_ptr<const SeparatorSet> separators;
  std::vector<CompiledRule> rules;          // enabled rules only, top to bottom
  std::vector<std::size_t> extensionRules;  // those of `rules` that change the extension

  // Per rule, per subject: the rule's numbers (nullopt: past the limit); empty for rules that
  // count nothing.
  using Numbers = std::vector<std::vector<std::optional<std::int64_t>>>;
  // Per rule, per subject: whether the rule acts on the file.
  using Acts = std::vector<std::vector<char>>;

  Acts whichAct(const std::vector<const RenameSubject*>& subjects) const;
  Numbers count(const std::vector<const RenameSubject*>& subjects, const Acts& acts,
                const icu::TimeZone& zone) const;
  // File `i` through every rule that acts on it.
  RuleResult run(const std::vector<const RenameSubject*>& subjects, std::size_t i, const Acts& acts,
                 const Numbers& numbers, const NamingContext& context, DateFormatterCache& dates,
                 DateFormatterCache& shotDates) const;
};

namespace {
// Below this many files per thread, starting a thread costs more than it saves.
constexpr std::size_t kMinimumPerThread = 2048;
}  // namespace

CompiledRuleStack::CompiledRuleStack(const RuleStack& stack)
    : compiled_(std::make_unique<Compiled>()) {
  compiled_->stack = stack;
  compiled_->separators = std::make_shared<const SeparatorSet>(stack.separators);
  for (const Rule& rule : compiled_->stack.rules) {
    if (!rule.isEnabled) continue;
    Compiled::CompiledRule c{&rule, RuleConditions(rule.conditions), std::nullopt, std::nullopt};
    if (const auto* op = std::get_if<RuleAction::Operation>(&rule.action.value)) {
      c.operation.emplace(op->operation);
    } else if (const auto* n = std::get_if<RuleAction::Numbering>(&rule.action.value)) {
      c.operation.emplace(RenameOperation{op::Insert{{}, n->counter.position}});
    } else if (const auto* f = std::get_if<RuleAction::Format>(&rule.action.value)) {
      c.parsed.emplace(f->format.templateText);
    }
    if (const auto* op = std::get_if<RuleAction::Operation>(&rule.action.value);
        op != nullptr && (std::holds_alternative<op::SetExtension>(op->operation.value) ||
                          std::holds_alternative<op::ChangeExtensionCase>(op->operation.value))) {
      compiled_->extensionRules.push_back(compiled_->rules.size());
    }
    compiled_->rules.push_back(std::move(c));
  }
}

CompiledRuleStack::~CompiledRuleStack() = default;
CompiledRuleStack::CompiledRuleStack(CompiledRuleStack&&) noexcept = default;
CompiledRuleStack& CompiledRuleStack::operator=(CompiledRuleStack&&) noexcept = default;

std::vector<RuleResult> CompiledRuleStack::apply(const std::vector<RenameSubject>& subjects,
                                                 const NamingContext& context) const {
  std::vector<const RenameSubject*> pointers;
  pointers.reserve(subjects.size());
  for (const RenameSubject& s : subjects)
    pointers.push_back(&s);
  return apply(pointers, context);
}

// Conditions look at the file, never at its working name, so they are settled first, for all
// rules at once.
CompiledRuleStack::Compiled::Acts CompiledRuleStack::Compiled::whichAct(
    const std::vector<const RenameSubject*>& subjects) const {
  Acts acts(rules.size(), std::vector<char>(subjects.size(), 0));
  parallelFor(subjects.size(), kMinimumPerThread, [&](std::size_t begin, std::size_t end) {
    for (std::size_t r = 0; r < rules.size(); ++r) {
      for (std::size_t i = begin; i < end; ++i)
        acts[r][i] = rules[r].conditions.hold(*subjects[i]);
    }
  });
  return acts;
}

// Numbers, in batch order, each counting rule with a fresh state.
CompiledRuleStack::Compiled::Numbers CompiledRuleStack::Compiled::count(
    const std::vector<const RenameSubject*>& subjects, const Acts& acts,
    const icu::TimeZone& zone) const {
  Numbers numbers(rules.size());
  for (std::size_t r = 0; r < rules.size(); ++r) {
    const Rule& rule = *rules[r].rule;
    const Counter* counter = nullptr;
    if (const auto* n = std::get_if<RuleAction::Numbering>(&rule.action.value)) {
      counter = &n->counter;
    } else if (rules[r].parsed && rules[r].parsed->usesCounter()) {
      counter = &std::get<RuleAction::Format>(rule.action.value).format.counter;
    }
    if (counter == nullptr) continue;
    CounterState state(*counter, zone);
    numbers[r].resize(subjects.size());
    for (std::size_t i = 0; i < subjects.size(); ++i) {
      if (acts[r][i]) numbers[r][i] = state.next(*subjects[i]);
    }
  }
  return numbers;
}

RuleResult CompiledRuleStack::Compiled::run(const std::vector<const RenameSubject*>& subjects,
                                            std::size_t i, const Acts& acts, const Numbers& numbers,
                                            const NamingContext& context, DateFormatterCache& dates,
                                            DateFormatterCache& shotDates) const {
  const icu::TimeZone& zone = *context.zone;
  const RenameSubject& subject = *subjects[i];
  RuleResult result;
  result.subjectIndex = i;
  FileName name = FileName::parse(subject.name);
  std::vector<BlockRef> locked;
  for (std::size_t r = 0; r < rules.size(); ++r) {
    if (!acts[r][i]) continue;
    const CompiledRule& c = rules[r];
    const Rule& rule = *c.rule;
    const FileName before = name;
    auto record = [&](OperationIssue issue) {
      result.issues.push_back(RuleIssue{rule.id, std::move(issue)});
    };
    auto take = [&](OperationOutcome outcome) {
      name = std::move(outcome.name);
      if (outcome.issue) record(std::move(*outcome.issue));
    };
    std::visit(
        [&](const auto& action) {
          using T = std::decay_t<decltype(action)>;
          if constexpr (std::is_same_v<T, RuleAction::Protect>) {
            locked.push_back(action.block);
          } else if constexpr (std::is_same_v<T, RuleAction::Format>) {
            const std::optional<std::int64_t> number =
                numbers[r].empty() ? std::optional<std::int64_t>(0) : numbers[r][i];
            const VariableContext variables{subject, name.base,           zone,
                                            dates,   context.datePattern, &shotDates};
            RenderedName rendered =
                c.parsed->render(variables, action.format.counter, number, context.missingText);
            name.base = std::move(rendered.text);
            for (OperationIssue& issue : rendered.issues)
              record(std::move(issue));
          } else if constexpr (std::is_same_v<T, RuleAction::Numbering>) {
            const std::optional<std::int64_t> number = numbers[r][i];
            if (!number) {
              record(OperationIssue::counterOverflow());
              return;
            }
            take(c.operation->applyInserting(name, {separators, locked},
                                             action.counter.text(*number)));
          } else {
            take(c.operation->apply(name, {separators, locked}));
          }
        },
        rule.action.value);
    result.changedBy.push_back(RuleStep{rule.id, name.base, name.base != before.base});
    if (name.ext != before.ext) result.changedExtensionBy.push_back(rule.id);
  }
  result.newName = std::move(name);
  return result;
}

std::vector<RuleResult> CompiledRuleStack::apply(const std::vector<const RenameSubject*>& subjects,
                                                 const NamingContext& context) const {
  const Compiled::Acts acts = compiled_->whichAct(subjects);
  const Compiled::Numbers numbers = compiled_->count(subjects, acts, *context.zone);
  // Then every file goes through the rules on its own.
  std::vector<RuleResult> results(subjects.size());
  parallelFor(subjects.size(), kMinimumPerThread, [&](std::size_t begin, std::size_t end) {
    DateFormatterCache dates(*context.zone);
    DateFormatterCache shotDates(*icu::TimeZone::getGMT());
    for (std::size_t i = begin; i < end; ++i)
      results[i] = compiled_->run(subjects, i, acts, numbers, context, dates, shotDates);
  });
  return results;
}

std::string CompiledRuleStack::twinExtension(const RenameSubject& twin,
                                             std::string_view primaryExtension,
                                             std::string_view primaryNewExtension) const {
  FileName name = FileName::parse(twin.name);
  // "CR2.xmp" beside "CR2": the part that names the primary's extension follows it.
  std::optional<std::string_view> named;
  if (const std::size_t dot = name.ext.rfind('.');
      dot != std::string::npos && !primaryExtension.empty() &&
      NameKey::of(std::string_view(name.ext).substr(0, dot)) == NameKey::of(primaryExtension)) {
    named = primaryNewExtension;
    name.ext.erase(0, dot + 1);
  }
  for (const std::size_t r : compiled_->extensionRules) {
    const Compiled::CompiledRule& c = compiled_->rules[r];
    if (c.conditions.hold(twin)) name = c.operation->apply(name, {compiled_->separators, {}}).name;
  }
  if (!named) return std::move(name.ext);
  std::string ext(*named);
  if (!ext.empty() && !name.ext.empty()) ext.push_back('.');
  return ext.append(name.ext);
}

std::vector<RuleResult> applyRuleStack(const RuleStack& stack,
                                       const std::vector<RenameSubject>& subjects,
                                       const NamingContext& context) {
  return CompiledRuleStack(stack).apply(subjects, context);
}

RuleResult applyRuleStack(const RuleStack& stack, const RenameSubject& subject,
                          const NamingContext& context) {
  return std::move(applyRuleStack(stack, std::vector<RenameSubject>{subject}, context).front());
}

NamingContext NamingContext::systemDefault() {
  NamingContext context;
  context.zone.reset(icu::TimeZone::createDefault());
  return context;
}

std::optional<NamingContext> NamingContext::inZone(std::string_view zoneID,
                                                   std::string missingText) {
  const icu::UnicodeString id = icu::UnicodeString::fromUTF8(
      icu::StringPiece(zoneID.data(), static_cast<int32_t>(zoneID.size())));
  std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(id));
  if (!zone || *zone == icu::TimeZone::getUnknown()) return std::nullopt;
  NamingContext context;
  context.zone = std::shared_ptr<const icu::TimeZone>(std::move(zone));
  context.missingText = std::move(missingText);
  return context;
}

std::set<TemplateVariable> variablesUsed(const RuleStack& stack) {
  std::set<TemplateVariable> out;
  for (const Rule& rule : stack.rules) {
    const auto* format = std::get_if<RuleAction::Format>(&rule.action.value);
    if (!rule.isEnabled || format == nullptr) continue;
    out.merge(variablesOf(Template::parse(format->format.templateText)));
  }
  return out;
}

Json toJson(const RuleStack& stack) {
  Json rules = Json::array();
  for (const Rule& r : stack.rules)
    rules.push_back(toJson(r));
  return Json{{"rules", std::move(rules)}, {"separators", stack.separators}};
}

namespace json {

RuleStack decodeStack(const Json& value) {
  if (!value.is_object()) throw DecodeError("Expected an object for a rule stack.");
  RuleStack stack;
  const Json& rules = member(value, "rules");
  if (!rules.is_array()) throw DecodeError("Expected a list for “rules”.");
  for (const Json& r : rules)
    stack.rules.push_back(decodeRule(r));
  if (value.contains("separators")) {
    const Json& separators = value["separators"];
    if (!separators.is_array()) throw DecodeError("Expected a list for “separators”.");
    stack.separators.clear();
    for (const Json& s : separators)
      stack.separators.push_back(decodeString(s, "separators"));
  }
  return stack;
}

}  // namespace json

Decoded<RuleStack> decodeRuleStack(const Json& value) {
  return json::decodeSafely<RuleStack>([&] { return json::decodeStack(value); });
}

}  // namespace tessane
