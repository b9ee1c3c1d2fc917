#include "RuleStack.h"

#include <unicode/timezone.h>

#include "DateFormatterCache.h"
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
  std::vector<CompiledRule> rules;  // enabled rules only, top to bottom
};

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

std::vector<RuleResult> CompiledRuleStack::apply(const std::vector<const RenameSubject*>& subjects,
                                                 const NamingContext& context) const {
  const icu::TimeZone& zone = *context.zone;
  DateFormatterCache dates(zone);

  struct Working {
    FileName name;
    std::vector<BlockRef> locked;
  };
  std::vector<Working> working;
  std::vector<RuleResult> results(subjects.size());
  working.reserve(subjects.size());
  for (std::size_t i = 0; i < subjects.size(); ++i) {
    working.push_back(Working{FileName::parse(subjects[i]->name), {}});
    results[i].subjectIndex = i;
  }

  for (const Compiled::CompiledRule& c : compiled_->rules) {
    const Rule& rule = *c.rule;
    std::optional<CounterState> counts;
    if (const auto* n = std::get_if<RuleAction::Numbering>(&rule.action.value)) {
      counts.emplace(n->counter, zone);
    } else if (const auto* f = std::get_if<RuleAction::Format>(&rule.action.value)) {
      counts.emplace(f->format.counter, zone);
    }
    const bool formatUsesCounter = c.parsed && c.parsed->usesCounter();

    for (std::size_t i = 0; i < subjects.size(); ++i) {
      const RenameSubject& subject = *subjects[i];
      if (!c.conditions.hold(subject)) continue;
      Working& w = working[i];
      RuleResult& result = results[i];
      const FileName before = w.name;
      auto record = [&](OperationIssue issue) {
        result.issues.push_back(RuleIssue{rule.id, std::move(issue)});
      };

      std::visit(
          [&](const auto& action) {
            using T = std::decay_t<decltype(action)>;
            if constexpr (std::is_same_v<T, RuleAction::Protect>) {
              w.locked.push_back(action.block);
            } else if constexpr (std::is_same_v<T, RuleAction::Format>) {
              const std::optional<std::int64_t> number =
                  formatUsesCounter ? counts->next(subject) : std::optional<std::int64_t>(0);
              const VariableContext variables{subject, w.name.base, zone, dates};
              RenderedName rendered =
                  c.parsed->render(variables, action.format.counter, number, context.missingText);
              w.name.base = std::move(rendered.text);
              for (OperationIssue& issue : rendered.issues)
                record(std::move(issue));
            } else if constexpr (std::is_same_v<T, RuleAction::Numbering>) {
              const std::optional<std::int64_t> number = counts->next(subject);
              if (!number) {
                record(OperationIssue::counterOverflow());
                return;
              }
              const OperationContext operationContext{compiled_->separators, w.locked};
              OperationOutcome outcome = c.operation->applyInserting(w.name, operationContext,
                                                                     action.counter.text(*number));
              w.name = std::move(outcome.name);
              if (outcome.issue) record(std::move(*outcome.issue));
            } else {
              const OperationContext operationContext{compiled_->separators, w.locked};
              OperationOutcome outcome = c.operation->apply(w.name, operationContext);
              w.name = std::move(outcome.name);
              if (outcome.issue) record(std::move(*outcome.issue));
            }
          },
          rule.action.value);

      result.changedBy.push_back(RuleStep{rule.id, w.name.base, w.name.base != before.base});
      if (w.name.ext != before.ext) result.changedExtensionBy.push_back(rule.id);
    }
  }

  for (std::size_t i = 0; i < subjects.size(); ++i)
    results[i].newName = std::move(working[i].name);
  return results;
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
  return NamingContext{std::shared_ptr<const icu::TimeZone>(icu::TimeZone::createDefault()), {}};
}

std::optional<NamingContext> NamingContext::inZone(std::string_view zoneID,
                                                   std::string missingText) {
  const icu::UnicodeString id = icu::UnicodeString::fromUTF8(
      icu::StringPiece(zoneID.data(), static_cast<int32_t>(zoneID.size())));
  std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(id));
  if (!zone || *zone == icu::TimeZone::getUnknown()) return std::nullopt;
  return NamingContext{std::shared_ptr<const icu::TimeZone>(std::move(zone)),
                       std::move(missingText)};
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
