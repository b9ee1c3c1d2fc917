#include "RenameEngine/Template.h"

#include <gtest/gtest.h>
#include <unicode/timezone.h>

#include <memory>

#include "RenameEngine/DateFormatterCache.h"

namespace tessane {
namespace {

using namespace std::chrono;
using Kind = TemplatePart::Kind;

TemplatePart text(std::string t) {
  return {Kind::text, std::move(t), std::nullopt};
}
TemplatePart variable(std::string name, std::optional<std::string> format = std::nullopt) {
  return {Kind::variable, std::move(name), std::move(format)};
}

TEST(Template, Parsing) {
  const Template t = Template::parse("{date:yyyy-MM-dd}_{original}_{counter}");
  EXPECT_TRUE(t.isValid);
  EXPECT_EQ(t.parts,
            (std::vector<TemplatePart>{variable("date", "yyyy-MM-dd"), text("_"),
                                       variable("original"), text("_"), variable("counter")}));
  EXPECT_EQ(Template::parse("a{{b}}c").parts, std::vector<TemplatePart>{text("a{b}c")});
  EXPECT_EQ(Template::parse("a}b").parts, std::vector<TemplatePart>{text("a}b")});
  EXPECT_EQ(Template::parse("{date:HH:mm}").parts,
            std::vector<TemplatePart>{variable("date", "HH:mm")});
  EXPECT_EQ(Template::parse("{date:}").parts, std::vector<TemplatePart>{variable("date", "")});
  EXPECT_EQ(Template::parse("{}").parts, std::vector<TemplatePart>{variable("")});
  EXPECT_EQ(Template::parse("{{{body}}}").parts,
            (std::vector<TemplatePart>{text("{"), variable("body"), text("}")}));
  const Template open = Template::parse("x_{date");
  EXPECT_FALSE(open.isValid);
  EXPECT_EQ(open.parts, std::vector<TemplatePart>{text("x_{date")});
  const Template late = Template::parse("{a}_{b");
  EXPECT_FALSE(late.isValid);
  EXPECT_EQ(late.parts, (std::vector<TemplatePart>{variable("a"), text("_{b")}));
  EXPECT_TRUE(Template::parse("").parts.empty());
}

TEST(Template, VariableNamesInEnglishAndItalian) {
  EXPECT_EQ(templateVariableNamed("Data"), TemplateVariable::date);
  EXPECT_EQ(templateVariableNamed("CITTA\xCC\x80"), TemplateVariable::city);  // decomposed, upper
  EXPECT_EQ(templateVariableNamed("citta"), TemplateVariable::city);
  EXPECT_FALSE(templateVariableNamed("foo").has_value());
  EXPECT_FALSE(templateVariableNamed("counter").has_value());
  EXPECT_TRUE(Template::parse("{Counter}").usesCounter());
  EXPECT_TRUE(Template::parse("x{contatore:4}").usesCounter());
  EXPECT_FALSE(Template::parse("{{counter}}").usesCounter());
  for (int i = 0; i <= static_cast<int>(TemplateVariable::pages); ++i) {
    const auto v = static_cast<TemplateVariable>(i);
    EXPECT_EQ(templateVariableNamed(rawValue(v)), v);
  }
}

class VariableValues : public ::testing::Test {
 protected:
  VariableValues() : zone_(icu::TimeZone::createTimeZone("Europe/Rome")), dates_(*zone_) {
    subject_.name = "DSC_00123.ARW";
    subject_.folder = "/photos/2024 Rome";
  }
  VariableValue value(TemplateVariable v, std::optional<std::string> format = std::nullopt,
                      std::string_view current = "DSC_00123") {
    return variableValue(v, format, VariableContext{subject_, current, *zone_, dates_});
  }
  void set(MetadataKey key, MetadataValue v) { subject_.metadata.set(key, std::move(v)); }

  std::unique_ptr<icu::TimeZone> zone_;
  DateFormatterCache dates_;
  RenameSubject subject_;
};

TEST_F(VariableValues, FrameNumberFromTheCurrentName) {
  EXPECT_EQ(value(TemplateVariable::frame), VariableValue::value("00123"));
  EXPECT_EQ(value(TemplateVariable::frame, "4"), VariableValue::value("0123"));
  EXPECT_EQ(value(TemplateVariable::frame, "3", "IMG_7"), VariableValue::value("007"));
  EXPECT_EQ(value(TemplateVariable::frame, "+2", "IMG_7"), VariableValue::value("07"));
  EXPECT_EQ(value(TemplateVariable::frame, std::nullopt, "IMG_1234-2"), VariableValue::value("2"));
  EXPECT_EQ(value(TemplateVariable::frame, std::nullopt, "Holiday"), VariableValue::missing());
  EXPECT_EQ(value(TemplateVariable::frame, "0"), VariableValue::invalidFormat("00123"));
  EXPECT_EQ(value(TemplateVariable::frame, "x"), VariableValue::invalidFormat("00123"));
  EXPECT_EQ(value(TemplateVariable::frame, ""), VariableValue::invalidFormat("00123"));
  EXPECT_EQ(value(TemplateVariable::frame, "99999999999").text.size(), 255u) << "capped";
}

TEST_F(VariableValues, DatesInTheContextTimeZone) {
  // 2024-05-01 22:30:15.250 UTC is 00:30 on 2 May in Rome.
  const Date when = Date(sys_days(year_month_day(year(2024), month(5), day(1))) + hours(22) +
                         minutes(30) + seconds(15) + milliseconds(250));
  EXPECT_EQ(value(TemplateVariable::date), VariableValue::missing());
  set(MetadataKey::date, MetadataValue::date(when));
  EXPECT_EQ(value(TemplateVariable::date), VariableValue::value("2024-05-02"));
  EXPECT_EQ(value(TemplateVariable::date, "yyyy-MM-dd_HH-mm-ss"),
            VariableValue::value("2024-05-02_00-30-15"));
  EXPECT_EQ(value(TemplateVariable::date, "HH:mm.SSS"), VariableValue::value("00:30.250"));
  EXPECT_EQ(value(TemplateVariable::date, "EEE d MMM"), VariableValue::value("Thu 2 May"));
  // A pattern ICU can't write in full gives the plain date, flagged, not a name cut short.
  EXPECT_EQ(value(TemplateVariable::date, "yyyy-foo"), VariableValue::invalidFormat("2024-05-02"));
  EXPECT_EQ(value(TemplateVariable::date, "foo"), VariableValue::invalidFormat("2024-05-02"));
  EXPECT_EQ(value(TemplateVariable::date, "yyyy 'foo'"), VariableValue::value("2024 foo"));
  // The subject's own (clock-corrected) capture date wins over the metadata.
  subject_.captureDate = when + hours(2);
  EXPECT_EQ(value(TemplateVariable::date, "HH"), VariableValue::value("02"));
  EXPECT_EQ(value(TemplateVariable::created), VariableValue::missing());
  set(MetadataKey::modified, MetadataValue::date(when));
  EXPECT_EQ(value(TemplateVariable::modified, "yyyyMMdd"), VariableValue::value("20240502"));
}

TEST_F(VariableValues, NumbersAsTheyGoIntoNames) {
  set(MetadataKey::shutter, MetadataValue::number(0.004));
  EXPECT_EQ(value(TemplateVariable::shutter), VariableValue::value("1-250"));
  EXPECT_EQ(shutterText(0.0125), "1-80");
  EXPECT_EQ(shutterText(0.3), "0.3");
  EXPECT_EQ(shutterText(1.0 / 3.0), "1-3");
  // The nearest whole reciprocal within 3%, not the whole part of one that falls just short.
  EXPECT_EQ(shutterText(1.0 / 25000), "1-25000");
  EXPECT_EQ(shutterText(10.0 / 150), "1-15");
  EXPECT_EQ(shutterText(0.0666667), "1-15");
  EXPECT_EQ(shutterText(1 / 99.6), "1-100");
  EXPECT_EQ(shutterText(1 / 2.6), "0.4") << "2.6 is too far from 3";
  EXPECT_EQ(shutterText(2.0), "2");
  EXPECT_EQ(shutterText(1.5), "1.5");
  set(MetadataKey::aperture, MetadataValue::number(8.0));
  EXPECT_EQ(value(TemplateVariable::aperture), VariableValue::value("8"));
  EXPECT_EQ(decimalText(2.8, 1), "2.8");
  EXPECT_EQ(decimalText(2.50, 2), "2.5");
  EXPECT_EQ(decimalText(29.97, 2), "29.97");
  EXPECT_EQ(decimalText(-0.001, 2), "0");
  set(MetadataKey::focal, MetadataValue::number(35.9));
  EXPECT_EQ(value(TemplateVariable::focal), VariableValue::value("35"));
  set(MetadataKey::fps, MetadataValue::number(25.0));
  EXPECT_EQ(value(TemplateVariable::fps), VariableValue::value("25"));
  set(MetadataKey::duration, MetadataValue::number(3725.9));
  EXPECT_EQ(value(TemplateVariable::duration), VariableValue::value("01-02-05"));
  EXPECT_EQ(value(TemplateVariable::duration, "s"), VariableValue::value("3725"));
  EXPECT_EQ(value(TemplateVariable::duration, "m"), VariableValue::invalidFormat("01-02-05"));
  set(MetadataKey::iso, MetadataValue::integer(100));
  EXPECT_EQ(value(TemplateVariable::iso), VariableValue::value("100"));
  EXPECT_EQ(value(TemplateVariable::iso, "5"), VariableValue::value("00100"));
  EXPECT_EQ(value(TemplateVariable::iso, "big"), VariableValue::invalidFormat("100"));
}

TEST_F(VariableValues, NamesTextsAndMissingData) {
  EXPECT_EQ(value(TemplateVariable::name), VariableValue::value("DSC_00123"));
  EXPECT_EQ(value(TemplateVariable::original), VariableValue::value("DSC_00123"));
  subject_.originalName = "_QM19581.ARW";
  EXPECT_EQ(value(TemplateVariable::original), VariableValue::value("_QM19581"));
  EXPECT_EQ(value(TemplateVariable::folder), VariableValue::value("2024 Rome"));
  EXPECT_EQ(value(TemplateVariable::ext), VariableValue::value("ARW"));
  EXPECT_EQ(value(TemplateVariable::body), VariableValue::missing());
  subject_.bodyTag = "A";
  EXPECT_EQ(value(TemplateVariable::body), VariableValue::value("A"));
  EXPECT_EQ(value(TemplateVariable::body, "x"), VariableValue::invalidFormat("A"));
  EXPECT_EQ(value(TemplateVariable::lens), VariableValue::missing());
  set(MetadataKey::lens, MetadataValue::text("FE 24-70mm F2.8 GM"));
  EXPECT_EQ(value(TemplateVariable::lens), VariableValue::value("FE 24-70mm F2.8 GM"));
  EXPECT_EQ(value(TemplateVariable::resolution), VariableValue::missing());
  set(MetadataKey::width, MetadataValue::integer(6000));
  set(MetadataKey::height, MetadataValue::number(4000));  // not an integer: no resolution
  EXPECT_EQ(value(TemplateVariable::resolution), VariableValue::missing());
  set(MetadataKey::height, MetadataValue::integer(4000));
  EXPECT_EQ(value(TemplateVariable::resolution), VariableValue::value("6000x4000"));
  EXPECT_EQ(value(TemplateVariable::resolution, "x"), VariableValue::invalidFormat("6000x4000"));
}

}  // namespace
}  // namespace tessane
