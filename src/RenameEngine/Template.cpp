#include "Template.h"

#include <unicode/uchar.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <utility>

#include "CaptureTime.h"
#include "Counter.h"
#include "DateFormatterCache.h"
#include "FileName.h"
#include "Unicode.h"

namespace tessane {
namespace {

constexpr std::array<std::string_view, 33> kVariableNames{
    "name",    "original", "folder",   "ext",   "body",   "resolution", "frame",
    "created", "modified", "date",     "make",  "model",  "lens",       "serial",
    "iso",     "shutter",  "aperture", "focal", "city",   "location",   "author",
    "title",   "headline", "duration", "width", "height", "fps",        "codec",
    "artist",  "album",    "track",    "year",  "pages"};

constexpr std::pair<std::string_view, TemplateVariable> kAliases[] = {
    {"nome", TemplateVariable::name},          {"originale", TemplateVariable::original},
    {"cartella", TemplateVariable::folder},    {"estensione", TemplateVariable::ext},
    {"corpo", TemplateVariable::body},         {"risoluzione", TemplateVariable::resolution},
    {"scatto", TemplateVariable::frame},       {"numero", TemplateVariable::frame},
    {"creazione", TemplateVariable::created},  {"modifica", TemplateVariable::modified},
    {"data", TemplateVariable::date},          {"marca", TemplateVariable::make},
    {"modello", TemplateVariable::model},      {"obiettivo", TemplateVariable::lens},
    {"seriale", TemplateVariable::serial},     {"tempo", TemplateVariable::shutter},
    {"diaframma", TemplateVariable::aperture}, {"focale", TemplateVariable::focal},
    {"citta", TemplateVariable::city},         {"citt\xC3\xA0", TemplateVariable::city},
    {"localita", TemplateVariable::location},  {"localit\xC3\xA0", TemplateVariable::location},
    {"autore", TemplateVariable::author},      {"titolo", TemplateVariable::title},
    {"durata", TemplateVariable::duration},    {"artista", TemplateVariable::artist},
    {"traccia", TemplateVariable::track},      {"anno", TemplateVariable::year},
    {"pagine", TemplateVariable::pages},
};

static_assert(static_cast<int>(TemplateVariable::pages) -
                  static_cast<int>(TemplateVariable::created) ==
              static_cast<int>(MetadataKey::pages));

std::string normalizedName(std::string_view typed) {
  return unicode::toLower(unicode::toNfc(typed));
}

// A whole decimal number with an optional sign, nothing else; nullopt otherwise.
std::optional<std::int64_t> wholeNumber(std::string_view text) {
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  if (text.empty() || (text.size() > 1 && text[0] == '-' && text[1] == '+')) return std::nullopt;
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

// The longest a padded number can usefully be: no file name holds more.
constexpr std::int64_t kMaxFrameWidth = 255;

bool isNumberCharacter(std::string_view character) {
  std::size_t offset = 0;
  const auto c = static_cast<UChar32>(unicode::nextScalar(character, offset));
  return u_getIntPropertyValue(c, UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}

VariableValue frameValue(std::string_view name, const std::optional<std::string>& format) {
  const std::vector<std::size_t> bounds = unicode::graphemeBoundaries(name);
  std::size_t end = bounds.size() - 1;  // in characters
  auto character = [&](std::size_t i) { return name.substr(bounds[i], bounds[i + 1] - bounds[i]); };
  while (end > 0 && !isNumberCharacter(character(end - 1)))
    --end;
  if (end == 0) return VariableValue::missing();
  std::size_t start = end;
  while (start > 0 && isNumberCharacter(character(start - 1)))
    --start;
  const std::string run(name.substr(bounds[start], bounds[end] - bounds[start]));
  if (!format) return VariableValue::value(run);
  const std::optional<std::int64_t> width = wholeNumber(*format);
  if (!width || *width < 1) return VariableValue::invalidFormat(run);
  const auto n = static_cast<std::size_t>(std::min(*width, kMaxFrameWidth));
  const std::size_t length = end - start;
  if (length >= n) {
    return VariableValue::value(
        std::string(name.substr(bounds[end - n], bounds[end] - bounds[end - n])));
  }
  return VariableValue::value(std::string(n - length, '0') + run);
}

VariableValue textValue(std::optional<std::string> text, const std::optional<std::string>& format) {
  if (!text || text->empty()) return VariableValue::missing();
  if (format) return VariableValue::invalidFormat(std::move(*text));
  return VariableValue::value(std::move(*text));
}

VariableValue integerValue(std::int64_t value, const std::optional<std::string>& format) {
  const std::string plain = std::to_string(value);
  if (!format) return VariableValue::value(plain);
  const std::optional<std::int64_t> padding = wholeNumber(*format);
  if (!padding || *padding < 0) return VariableValue::invalidFormat(plain);
  return VariableValue::value(Counter::text(value, *padding));
}

std::string durationText(double seconds) {
  const auto t = static_cast<std::int64_t>(std::max(0.0, std::trunc(seconds)));
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%02lld-%02lld-%02lld", static_cast<long long>(t / 3600),
                static_cast<long long>((t % 3600) / 60), static_cast<long long>(t % 60));
  return buffer;
}

VariableValue numberValue(TemplateVariable variable, double value,
                          const std::optional<std::string>& format) {
  std::string plain;
  switch (variable) {
    case TemplateVariable::shutter:
      plain = shutterText(value);
      break;
    case TemplateVariable::aperture:
      plain = decimalText(value, 1);
      break;
    case TemplateVariable::focal:
      plain = decimalText(std::trunc(value), 0);
      break;
    case TemplateVariable::duration:
      if (format && *format == "s") {
        return VariableValue::value(decimalText(std::max(0.0, std::trunc(value)), 0));
      }
      plain = durationText(value);
      break;
    default:
      plain = decimalText(value, 2);
      break;
  }
  if (format) return VariableValue::invalidFormat(std::move(plain));
  return VariableValue::value(std::move(plain));
}

VariableValue dateValue(const std::optional<Date>& date, const std::optional<std::string>& format,
                        const VariableContext& context, DateFormatterCache* in = nullptr) {
  if (!date) return VariableValue::missing();
  DateFormatterCache& dates = in != nullptr ? *in : context.dates;
  static constexpr std::string_view kPlainPattern = "yyyy-MM-dd";
  if (format && !format->empty()) {
    if (std::optional<std::string> text = dates.format(*date, *format)) {
      return VariableValue::value(std::move(*text));
    }
    return VariableValue::invalidFormat(dates.format(*date, kPlainPattern).value_or(""));
  }
  // The user's own pattern for dates written plain; one ICU can't apply is taken as not set.
  if (std::optional<std::string> text = dates.format(*date, context.defaultDatePattern)) {
    return VariableValue::value(std::move(*text));
  }
  return VariableValue::value(dates.format(*date, kPlainPattern).value_or(""));
}

VariableValue metadataValue(TemplateVariable variable, MetadataKey key,
                            const std::optional<std::string>& format,
                            const VariableContext& context) {
  const MetadataValue* value = context.subject.metadata.find(key);
  if (value == nullptr) return VariableValue::missing();
  switch (value->kind()) {
    case MetadataValue::Case::text:
      return textValue(*value->asText(), format);
    case MetadataValue::Case::integer:
      return integerValue(*value->asInteger(), format);
    case MetadataValue::Case::number:
      return numberValue(variable, *value->asNumber(), format);
    case MetadataValue::Case::date:
      return dateValue(*value->asDate(), format, context);
  }
  return VariableValue::missing();
}

}  // namespace

Template Template::parse(std::string_view text) {
  Template t;
  std::string buffer;
  auto flush = [&] {
    if (!buffer.empty())
      t.parts.push_back(TemplatePart{TemplatePart::Kind::text, std::move(buffer), {}});
    buffer.clear();
  };
  std::size_t i = 0;
  while (i < text.size()) {
    const char c = text[i];
    if ((c == '{' || c == '}') && i + 1 < text.size() && text[i + 1] == c) {
      buffer.push_back(c);
      i += 2;
      continue;
    }
    if (c != '{') {
      buffer.push_back(c);
      ++i;
      continue;
    }
    const std::size_t close = text.find('}', i + 1);
    if (close == std::string_view::npos) {
      buffer.append(text.substr(i));
      t.isValid = false;
      break;
    }
    flush();
    const std::string_view content = text.substr(i + 1, close - i - 1);
    const std::size_t colon = content.find(':');
    TemplatePart part{TemplatePart::Kind::variable, std::string(content.substr(0, colon)), {}};
    if (colon != std::string_view::npos) part.format = std::string(content.substr(colon + 1));
    t.parts.push_back(std::move(part));
    i = close + 1;
  }
  flush();
  return t;
}

bool Template::isCounterName(std::string_view name) {
  const std::string n = normalizedName(name);
  return n == "counter" || n == "contatore";
}

bool Template::usesCounter() const {
  for (const TemplatePart& p : parts) {
    if (p.kind == TemplatePart::Kind::variable && isCounterName(p.text)) return true;
  }
  return false;
}

std::set<TemplateVariable> variablesOf(const Template& parsed) {
  std::set<TemplateVariable> out;
  for (const TemplatePart& p : parsed.parts) {
    if (p.kind != TemplatePart::Kind::variable) continue;
    if (const std::optional<TemplateVariable> v = templateVariableNamed(p.text)) out.insert(*v);
  }
  return out;
}

std::string_view rawValue(TemplateVariable variable) {
  return kVariableNames[static_cast<std::size_t>(variable)];
}

std::optional<TemplateVariable> templateVariableNamed(std::string_view typed) {
  const std::string n = normalizedName(typed);
  for (std::size_t i = 0; i < kVariableNames.size(); ++i) {
    if (kVariableNames[i] == n) return static_cast<TemplateVariable>(i);
  }
  for (const auto& [alias, variable] : kAliases) {
    if (alias == n) return variable;
  }
  return std::nullopt;
}

VariableValue variableValue(TemplateVariable variable, const std::optional<std::string>& format,
                            const VariableContext& context) {
  const RenameSubject& subject = context.subject;
  switch (variable) {
    case TemplateVariable::name:
      return textValue(FileName::parse(subject.name).base, format);
    case TemplateVariable::original:
      return textValue(FileName::parse(subject.originalName.value_or(subject.name)).base, format);
    case TemplateVariable::folder:
      return textValue(subject.folder.filename().string(), format);
    case TemplateVariable::ext:
      return textValue(FileName::parse(subject.name).ext, format);
    case TemplateVariable::body:
      return textValue(subject.bodyTag, format);
    case TemplateVariable::frame:
      return frameValue(context.currentName, format);
    case TemplateVariable::resolution: {
      const MetadataValue* w = subject.metadata.find(MetadataKey::width);
      const MetadataValue* h = subject.metadata.find(MetadataKey::height);
      const std::int64_t* width = w ? w->asInteger() : nullptr;
      const std::int64_t* height = h ? h->asInteger() : nullptr;
      if (width == nullptr || height == nullptr) return VariableValue::missing();
      std::string plain = std::to_string(*width);
      plain.append("x").append(std::to_string(*height));
      return format ? VariableValue::invalidFormat(std::move(plain))
                    : VariableValue::value(std::move(plain));
    }
    case TemplateVariable::date: {
      const std::optional<Date> when = CaptureTime::of(subject.captureDate, subject.metadata);
      const std::optional<std::int32_t> offset = subject.metadata.shotOffset();
      if (when && offset && context.shotDates != nullptr) {
        // The shot's own clock, where the file says it: the moment moved by its offset, written
        // in UTC. A phone's video and its photos then read the same local time.
        return dateValue(*when + std::chrono::seconds(*offset), format, context, context.shotDates);
      }
      return dateValue(when, format, context);
    }
    default:
      break;
  }
  // The rest are the metadata keys, in the same order.
  const auto key = static_cast<MetadataKey>(static_cast<int>(variable) -
                                            static_cast<int>(TemplateVariable::created));
  return metadataValue(variable, key, format, context);
}

std::string decimalText(double value, int digits) {
  char buffer[512];
  const auto [end, error] =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, digits);
  if (error != std::errc()) return {};
  std::string text(buffer, end);
  if (text.find('.') != std::string::npos) {
    while (!text.empty() && text.back() == '0')
      text.pop_back();
    if (!text.empty() && text.back() == '.') text.pop_back();
  }
  if (text == "-0") text = "0";
  return text;
}

std::string shutterText(double seconds) {
  if (seconds > 0 && seconds < 1) {
    // The nearest whole reciprocal, as photographers read a speed: an exposure stored as 10/150
    // or as 1/25000 divides out just short of 15 or 25000, which are the speeds meant.
    const double inverse = 1.0 / seconds;
    const double nearest = std::round(inverse);
    if (nearest >= 2 && std::fabs(inverse - nearest) / nearest < 0.03) {
      return "1-" + decimalText(nearest, 0);
    }
  }
  return decimalText(seconds, 1);
}

}  // namespace tessane
