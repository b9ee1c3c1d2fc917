#include "RenamePlan.h"

#include "RenameEngine/Unicode.h"

namespace tessane {
namespace {

// The rule that gives every new name's extension the case the settings ask for. It has an id of
// its own, the same in every plan, so that a stack made twice is the same stack.
Rule extensionCaseRule(ExtensionCase extensionCase) {
  Rule rule;
  rule.id = *Uuid::parse("7E55A9E0-0E47-4C45-8A5E-000000000001");
  rule.action.value = RuleAction::Operation{RenameOperation{op::ChangeExtensionCase{
      extensionCase == ExtensionCase::upper ? CaseStyle::upper : CaseStyle::lower}}};
  return rule;
}

PlanProblem problem(PlanProblem::Kind kind, std::string text = {}) {
  PlanProblem p;
  p.kind = kind;
  p.text = std::move(text);
  return p;
}

}  // namespace

Planned<RenameSettings> resolveSettings(const RenameOptions& o, const Preferences& prefs) {
  RenameSettings s;
  s.counter.start = o.counterStart.value_or(prefs.counterStart());
  s.counter.step = o.counterStep.value_or(1);
  s.counter.padding = o.counterDigits.value_or(prefs.counterDigits());
  s.counter.reset = o.counterReset.value_or(CounterReset::never);
  s.order = o.order.value_or(prefs.batchOrder().value_or(BatchOrder::captureTime));
  s.duplicates = o.duplicates.value_or(prefs.duplicatePolicy());

  const std::set<TwinKind> kinds = o.twinKinds.value_or(prefs.twinKinds());
  s.twins =
      TwinOptions::forKinds(kinds.count(TwinKind::images) > 0, kinds.count(TwinKind::video) > 0,
                            kinds.count(TwinKind::sidecars) > 0);
  s.twins.isEnabled = o.keepTwinsTogether;

  std::string missing = o.missingText.value_or(prefs.missingText());
  if (o.timeZone.empty()) {
    s.naming = NamingContext::systemDefault();
    s.naming.missingText = std::move(missing);
  } else if (auto zone = NamingContext::inZone(o.timeZone, std::move(missing))) {
    s.naming = std::move(*zone);
  } else {
    return problem(PlanProblem::Kind::unknownZone, o.timeZone);
  }
  s.naming.datePattern = prefs.dateFormat();
  s.extensionCase = prefs.extensionCase();
  s.originalNames = o.originalNames.value_or(prefs.originalNames());
  return s;
}

Planned<RuleStack> stackFor(const RenameOptions& o, const RenameSettings& settings,
                            const PresetStore& presets) {
  if (o.templateText.empty() && o.preset.empty()) return problem(PlanProblem::Kind::noRules);
  RuleStack stack;
  if (!o.preset.empty()) {
    Result<PresetStore::Found, PresetStore::LookupError> found = presets.find(o.preset);
    if (!found) {
      if (found.error().kind == PresetStore::LookupError::Kind::notFound) {
        return problem(PlanProblem::Kind::presetNotFound, o.preset);
      }
      PlanProblem p = problem(PlanProblem::Kind::presetListing);
      p.io = found.error().listing;
      return p;
    }
    if (!found.value().preset) {
      PlanProblem p = problem(PlanProblem::Kind::presetUnreadable, o.preset);
      p.preset = found.value().failure;
      return p;
    }
    stack = std::move(found.value().preset->stack);
  }
  if (!o.templateText.empty()) {
    Rule format;
    format.action = {RuleAction::Format{NameFormat{o.templateText, settings.counter}}};
    stack.rules.insert(stack.rules.begin(), format);
  }
  return withSettingsRules(std::move(stack), settings);
}

RuleStack withSettingsRules(RuleStack stack, const RenameSettings& settings) {
  if (settings.extensionCase != ExtensionCase::keep) {
    stack.rules.push_back(extensionCaseRule(settings.extensionCase));
  }
  return stack;
}

Planned<RenamePlan> planRename(const PlanRequest& request) {
  RenamePlan plan;
  plan.settings = request.settings;

  ShootRequest shootRequest;
  shootRequest.paths = request.paths;
  shootRequest.zone = plan.settings.naming.zone.get();
  shootRequest.bodies = request.bodies;
  shootRequest.twins = &plan.settings.twins;
  const std::set<TemplateVariable> variables = variablesUsed(request.stack);
  shootRequest.scope = MetadataScope::forVariables(variables);
  shootRequest.readOriginalNames = variables.count(TemplateVariable::original) > 0;
  shootRequest.progress = request.progress;
  shootRequest.stop = request.stop;
  GatheredShoot gathered = gatherShoot(shootRequest);
  plan.notices = std::move(gathered.notices);
  if (gathered.problem) {
    PlanProblem p = problem(PlanProblem::Kind::shoot);
    p.shoot = gathered.problem;
    return p;
  }
  plan.shoot = std::move(*gathered.shoot);

  PreviewRequest preview;
  preview.subjects = plan.shoot.subjects;
  preview.stack = request.stack;
  preview.twins = plan.settings.twins;
  preview.order = plan.settings.order;
  preview.duplicates = plan.settings.duplicates;
  preview.folders = plan.shoot.folders;
  preview.naming = plan.settings.naming;
  plan.preview = buildPreview(preview);
  return plan;
}

std::vector<FileMove> movesOf(const RenamePreview& preview,
                              const std::vector<std::filesystem::path>& paths,
                              const std::vector<bool>* inScope) {
  std::vector<FileMove> moves;
  std::filesystem::path givenFolder, absoluteFolder;
  bool first = true;
  for (std::size_t r : preview.changedFiles) {
    const PlannedRename& row = preview.items[r];
    if (inScope != nullptr && !(*inScope)[row.subjectIndex]) continue;
    const std::filesystem::path& given = paths[row.subjectIndex];
    if (first || given.parent_path() != givenFolder) {
      first = false;
      givenFolder = given.parent_path();
      std::error_code ignored;
      absoluteFolder = givenFolder.empty() ? std::filesystem::current_path(ignored)
                                           : std::filesystem::absolute(givenFolder, ignored);
    }
    moves.push_back(
        FileMove{absoluteFolder / given.filename(), absoluteFolder / row.newName.fullName()});
  }
  return moves;
}

std::vector<FileMove> movesOf(const RenamePlan& plan) {
  std::vector<std::filesystem::path> resolved;
  resolved.reserve(plan.shoot.subjects.size());
  for (const RenameSubject& s : plan.shoot.subjects)
    resolved.push_back(s.folder / s.name);
  return movesOf(plan.preview, resolved);
}

Planned<std::vector<FileMove>> originalNameMoves(const Shoot& shoot) {
  std::vector<FileMove> moves;
  for (std::size_t i = 0; i < shoot.subjects.size(); ++i) {
    const std::optional<std::string>& original = shoot.subjects[i].originalName;
    if (!original || *original == shoot.subjects[i].name) continue;
    const std::filesystem::path& folder = shoot.subjects[i].folder;
    moves.push_back(FileMove{folder / shoot.subjects[i].name, folder / *original});
  }
  if (moves.empty()) return problem(PlanProblem::Kind::noOriginalNames);
  return moves;
}

Planned<RenameHistory::Entry> entryToRevert(const RenameHistory& history, std::string_view id) {
  const RenameHistory::Entry* found = nullptr;
  const std::string wanted = unicode::foldCase(id);
  for (const RenameHistory::Entry& e : history.entries()) {
    const std::string text = e.id.string();
    if (text.size() < wanted.size() || unicode::foldCase(text.substr(0, wanted.size())) != wanted)
      continue;
    if (found != nullptr) return problem(PlanProblem::Kind::ambiguousEntry, std::string(id));
    found = &e;
  }
  if (found == nullptr || id.size() < 4) {
    return problem(PlanProblem::Kind::unknownEntry, std::string(id));
  }
  if (found->isReverted) return problem(PlanProblem::Kind::alreadyReverted, std::string(id));
  return *found;
}

std::optional<RenameHistory::Entry> entryToUndo(const RenameHistory& history) {
  const RenameHistory::Entry* entry = history.newestNotReverted();
  if (entry == nullptr) return std::nullopt;
  return *entry;
}

}  // namespace tessane
