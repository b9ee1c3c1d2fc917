// Rules and moments for the tests: a rule of one operation or one name format, and a UTC time.
#pragma once

#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "RenameEngine/Rule.h"

namespace tessane::testing {

inline Rule operationRule(RenameOperation::Value value,
                          std::vector<RuleCondition> conditions = {}) {
  Rule r;
  r.action = {RuleAction::Operation{RenameOperation{std::move(value)}}};
  r.conditions = std::move(conditions);
  return r;
}

inline Rule formatRule(std::string templateText, Counter counter = {}) {
  Rule r;
  r.action = {RuleAction::Format{NameFormat{std::move(templateText), counter}}};
  return r;
}

inline Date utc(int y, unsigned mo, unsigned d, int h = 0, int mi = 0, int s = 0, int us = 0) {
  using namespace std::chrono;
  return Date(sys_days(year_month_day(year(y), month(mo), day(d))) + hours(h) + minutes(mi) +
              seconds(s) + microseconds(us));
}

}  // namespace tessane::testing
