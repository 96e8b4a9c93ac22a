#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "model/sheet_data.h"
#include "platform/base/code_page.h"
#include "template/compiler.h"
#include "tests/template/outline.h"

namespace {

/// `@` in a template marks where its reader is after the token at which the error is found; it isn't compiled.
constexpr char kMark = '@';

/// Line and position, counted from 1.
std::pair<std::uint32_t, std::uint32_t> PositionOf(std::string_view text) {
    const auto line = static_cast<std::uint32_t>(1 + std::count(text.begin(), text.end(), '\n'));
    return {line, static_cast<std::uint32_t>(text.size() - (text.rfind('\n') + 1) + 1)};
}

std::string Outline(const std::string &text, std::uint32_t language = 9) {
    kq_cfg::TOptions options;
    options.language = language;
    const kq_cfg::TTemplate compiled = kq_cfg::DescribeTemplate(options, text, "");
    return compiled.report.result.ok ? outline::Print(compiled)
                                     : "error " + kq_base::ToUtf8(compiled.report.result.message);
}

const std::string kItem = "Očekáváno jedno z  řetězec number string dll %";
const std::string kSection = "Očekáváno jedno z  name def_key required multiple depend_on channels end_section";
const std::string kKey = "Očekáváno jedno z  name label multiple par enable_if end_key var";
const std::string kAttribute =
    "Očekáváno jedno z  default range_from range_to id label comment bubble procedure load_pdt optional enable_if "
    "ch_number ch_from ch_to ch_type ch_direction write_if_all floating";
const std::string kText = "Očekáváno jedno z  řetězec [";
const std::string kExpression = "Očekáváno jedno z  číslo řetězec % ( true false";
const std::string kUndeclared = "Nedefinovaný identifikátor.";
const std::string kVersion = "Chybná verze kq_pdt.dll";
const std::string kNoChannels = "V tomto PARu nelze definovat kanály";

std::string Expected(const std::string &name) { return "Očekáván  " + name; }

/// Texts that fail with the same message, without what is before each of them.
struct TFailures {
    std::string before;
    std::string message;
    std::vector<std::string> texts;
};

TEST(Compiler, FailuresWithTheirPositions) {
    const std::string s = "def_section ";
    const std::string k = "def_section def_key ";
    const std::string n = "def_section name = number { ";
    const std::vector<TFailures> failures = {
        {"", Expected("def_section"), {"abc@", "end_section@", "Def_section@", "\n\n  ;@"}},
        {"",
         Expected(";"),
         {"no_channels required@", "keywords = 'a' 'b'@", "ver_from = 1 ,@", "channels = 1, 2, real, input 'a'@"}},
        {"", Expected("="), {"keywords 'a'@", "ver_from 1@;", "channels 1@"}},
        {"",
         Expected("řetězec"),
         {"keywords = 'a', b@", "keywords = ;@", "channels = 1, 2, real, input, 5@",
          "channels = 1, 2, real, input, [CZ 'a'@", "channels = 1, 2, real, input, 'a', ;@"}},
        {"", kVersion, {"ver_from = 50041@;", "ver_from = 50040.0@;", "ver_from = 4294967296@;", "ver_from = 1e3@;"}},
        {"", Expected("číslo"), {"ver_from = abc@;", "channels = a@", "channels = 1.0@", "channels = 1, 4294967296@"}},
        {"", Expected(","), {"channels = 1 2@", "channels = 1, 2;@", "channels = 1, 2, real;@"}},
        {"",
         Expected("string shortcard boolean"),
         {"channels = 1, 2, number@", "channels = 1, 2, Real@", "channels = 1, 2, begin@"}},
        {"",
         Expected("input output bidirectional"),
         {"channels = 1, 2, real, real@", "channels = 1, 2, real, ch_direction@"}},
        {s,
         kSection,
         {"number@", "end_key@", "@", "channels_group ,@", "channels_group ; ;@", "name = 'a' 'b'@;", "var v@",
          "var %v%;;@", "var %v% {};;@"}},
        {s, Expected("="), {"name 'a'@", "depend_on %@", "var %v%, name@", "var %v% { init_value 5@"}},
        {s, "", {"name = 'a'; name =\n'b'@;"}},
        {s,
         Expected(";"),
         {"required name@", "multiple =@", "channels end_section@",
          "name = number { id = %v% }; depend_on = %v% end_section@", "name = 'a' = %v% end_section@",
          "var %v% { init_value = 5 }@"}},
        {s,
         Expected("%"),
         {"depend_on = v@", "name = number { id = %v% }; depend_on = %v ;@", "name = 'a' = v@", "name = 'a' = %v;@",
          "var %v%; name = %v ;@", "var %v ;@"}},
        {s,
         kUndeclared,
         {"depend_on = %v@%;", "def_key var %v%; end_key name = %v@%;", "var %v%; depend_on = %v@%;",
          "name = number { id = %v% }; depend_on = %v%; depend_on = %w@%;", "name = %v@%;"}},
        {s,
         Expected("identifikátor"),
         {"depend_on = %name@%;", "name = 'a' = %5@", "name = %5@", "name = [ 5@", "name = [ end@", "var % 5@",
          "var %v%, %name@%"}},
        {s, "Vic jak jeden depend_on", {"name = number { id = %v% }; depend_on = %v%; depend_on = %v@%;"}},
        {"no_channels;", kNoChannels, {s + "channels@ ;", k + "channels@ ;"}},
        {k, kKey, {"required@", "enable_if@ 1", "@", "end_section@"}},
        {k, Expected("="), {"label 'a'@", "par number@"}},
        {k, kText, {"label = 5@"}},
        {k, Expected(";"), {"label = 'a' end_key@"}},
        {k, "", {"name = 'a'; name = 'b'@"}},
        {k, kSection, {"end_key ;@"}},
        {s, kItem, {"name = 5@;", "name = true@;", "name = 'a' + ;@"}},
        {s, kText, {"name = 'a', 5@"}},
        {s, Expected("]"), {"name = [CZ 'a'@"}},
        {s, Expected("řetězec"), {"name = [CZ] a@"}},
        {n, kAttribute, {"abc@", ";@", "label = 'a';;@"}},
        {n,
         Expected("="),
         {"default 5@", "ch_type 'a' integer@", "range_from 5@", "id %@v%", "option 'a'@", "option = 'a' label 'b'@",
          "nedef 'a'@"}},
        {n, kExpression, {"default = }@", "direction ,@", "enable_if =@"}},
        {n, kUndeclared, {"default = %v@%"}},
        {n, Expected(","), {"type true }@"}},
        {n, "", {"ch_type %5@%", "range_from = a@", "range_to = -@5", "id = %'v'@%"}},
        {n, Expected("%"), {"ch_type %v =@", "id = v@", "id = %v }@", "write_if_all = 'a'@"}},
        {n, "Očekáváno jedno z  string", {"ch_type = 5@", "ch_type = abc@", "ch_direction = def_section@"}},
        {n, kText, {"option = 5@", "option = 'a' label = }@", "procedure = a@"}},
        {n,
         "Očekáváno jedno z  = ;",
         {"load_pdt =@ 1", "optional =@", "ch_number =@", "read_all =@", "floating =@", "no_case_sensitive =@"}},
        {n, "Chybná definice channels_group", {"ch_from = 1@", "ch_to = ;@"}},
        {s, kExpression, {"channels_group { ch_from = }@"}},
        {n, "Očekáváno jedno z  ; =", {"ch_count }@", "ch_count ,@"}},
        {n, Expected("číslo"), {"ch_count = a@"}},
        {n, kSection, {"optional bubble@"}},
        {s, "Očekáváno jedno z  } init_value", {"var %v% { ;@"}},
        {s, "Očekáváno jedno z  řetězec číslo create_new_channel", {"var %v% { init_value = true@"}},
        // What can't be read as a token is the end of the text inside a section
        {s, kItem, {"name = 'ab@\n'; end_section"}},
        {s,
         kSection,
         {"name = 'a'; (* open (* comment *) end_section@", "required; '" + std::string(1023, 'x') + "x@'"}},
        {k, kExpression, {"par = number { default = 5 + 1e+@x"}}};
    for (const auto &[before, message, marked_texts] : failures) {
        for (const std::string &marked : marked_texts) {
            std::string text = before + marked;
            const std::size_t mark = text.find(kMark);
            text.erase(mark, 1);
            const kq_cfg::TTemplateResult result = kq_cfg::DescribeTemplate({}, text, "").report.result;
            EXPECT_FALSE(result.ok) << text;
            EXPECT_EQ(kq_base::ToUtf8(result.message), message) << text;
            EXPECT_EQ(std::pair(result.line, result.position), PositionOf(text.substr(0, mark))) << text;
        }
    }
}

struct TAccepted {
    std::string text;
    std::string outline;
};

TEST(Compiler, AcceptedForms) {
    const std::vector<TAccepted> cases = {
        {"", ""},
        {"(* only (* a *) comment *)", ""},
        {"def_section end_section", " []"},
        {"def_section end_section 'open\nabc", " []"},
        {"def_section end_section 1e+ abc", " []"},
        {"def_section end_section (* open", " []"},
        {"ver_from = 50040; ver_from = 0; ver_from = 00000000000050040;", ""},
        {"keywords = 'a', 'b'; keywords = 'it''s';", " a b it's"},
        {"channels = 5, 7, real, input; channels = 1, 2, string, bidirectional, 'a', 'b';",
         " 1..2:string:bidirectional:a 5..7:real:input:"},
        {"channels = 7, 5, real, input; no_channels; channels = 1, 1, boolean, output, [EN] 'a';",
         " nochannels 1..1:boolean:output:"},
        {"def_section channels; end_section no_channels; def_section end_section", " nochannels [ channels] []"},
        {"def_section channels_group { ch_from = 1 } end_section def_section name = 'a' { ch_from = 2; ch_from = 3 } "
         "end_section",
         " [ <group from=1 to=2>] [ const'a']"},
        {"def_section name = number { id = %v% }; end_section def_section name = 'a' + %v%; depend_on = %v%; "
         "end_section",
         " %v=none [ number id=v] [v: const'a' + variable text='v']"}};
    const std::vector<TAccepted> sections = {
        {"multiple; required; required; def_key channels; multiple; end_key",
         " [ required multiple { multiple channels}]"},
        {"def_key par = 'a' label = 'L', 'M'; par = 'b' end_key name = number + 'x'",
         " [ number + const'x' { label='L' | const'a' | const'b'}]"},
        {"name = 'a' + string + dll + options + number", " [ const'a' + string + dll + options + number]"},
        {"name = 'a', 'b' required;", " [ const'a' required]"},
        {"name = '', 'b';", " [ const'b']"},
        {"name = 'a' = %v%;", " %v=none [ const'a' = %v%]"},
        {"var %v%; name = %v% {comment = 'c'} + %v%;", " [ variable text='v' comment='c' + variable text='v' %v=none]"},
        {"var %v%; def_key var %v%; name = %v%; par = number { id = %v% } = %v%; end_key",
         " %v=none [ %v=none { variable text='v' %v=none | number id=v = %v%}]"},
        {"name = 'a' { } + 'b' {};", " [ const'a' + const'b']"},
        {"name = number { optional; };", " [ number optional]"},
        {"name = number { optional required;", " [ number optional required]"},
        {"name = number { optional + 'a' { comment = 'c' ; }", " [ number optional + const'a' comment='c']"},
        {"name = number { write_if_all = %v%;", " %v=none [ all number = %v%]"},
        {"name = string { label='l'; bubble='b'; comment='c'; nedef='n'; no_case_sensitive; default='d' + 'e'};",
         " [ string label='l' bubble='b' comment='c' nedef='n' anycase default=('d' + 'e')]"},
        {"name = number { range_from = 5; range_to = 1.5; range_to = 4294967296; range_from = 6e0 };",
         " [ number 5..0]"},
        {"name = number { range_from = 5; range_to = 9; channel_range; load_pdt; floating };",
         " [ number 1..2147483647]"},
        {"name = number { id = %v%; id = %w%; };", " %v=none [ number id=v]"},
        {"name = number { enable_if true; enable_if %v% = 1 }; var %v%;", "error " + kUndeclared},
        {"var %v%; name = number { enable_if true; enable_if %v% = 1 };", " [ number if=(%v% = 1) %v=none]"},
        {"name = options { option = 'a' label = 'A'; option = 'b', 'c'; option = '' label = 'none' };",
         " [ options a:A b:b :none]"},
        {"name = dll { procedure = 'p'; procedure = 'q' };", " [ dll p() q()]"},
        {"name = number { ch_from } + number { ch_to } + number { ch_number; ch_count; read_all };",
         " [ number 1..2147483647 ch_from + number 1..2147483647 ch_to + number 1..2147483647 ch_number ch_count "
         "read_all]"},
        {"name = number { ch_count = 4 } + number { ch_count = 4.5; ch_count; }",
         " [ number ch_count count=4 + number ch_count]"},
        {"name = options { ch_type '1' = boolean; ch_type = real; ch_direction %d% 'x' = input }",
         " %d=none [ options ch_type ch_direction type'1'boolean type''real direction'x'input direction%d]"},
        {"channels_group", " [ <group>]"},
        {"var %v%; channels_group { ch_from = %v%; ch_to = %v% + 3; type %v% = 1, real; type true, abc } ;",
         " [ %v=none <group from=%v% to=(%v% + 3) type:real=(%v% = 1) type:-=true>]"},
        {"channels_group { ch_from = 1 } def_key channels_group {} name = 'a' { ch_to = 2; ch_from = 3; ch_from = "
         "4;ch_to = 5 }; end_key",
         " [ <group from=1> { const'a' <group from=3 to=2>}]"},
        {"var %b%, %a%; var %a% var", " [ %a=none %b=none]"},
        {"var %a%; , %b% {}, %c% {};,", " [ %a=none %b=none %c=none]"},
        {"var %a% { init_value = 5; init_value = 6.5; }, %b% { init_value = 'x'; } %c%;", "error " + kSection},
        {"var %a% { init_value = 5; init_value = 6.5; }, %b% { init_value = 'x'; }; var %c% { init_value = "
         "create_new_channel; };",
         " [ %a=5 %b='x' %c=channel]"}};
    for (const auto &[text, outline] : cases) {
        EXPECT_EQ(Outline(text), outline) << text;
    }
    for (const auto &[text, outline] : sections) {
        EXPECT_EQ(Outline("def_section " + text + " end_section"), outline) << text;
    }
}

TEST(Compiler, TextsFollowTheLanguage) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        // text, and what it is under CZ, EN, GE, JP and any other language
        {"'p'", "p p p p p"},
        {"'p', 'q'", "p p p p p"},
        {"'p', [EN] 'e'", "p e p p p"},
        {"[EN] 'e', 'p'", "p e p p p"},
        {"[CZ] 'c', [EN] 'e', [GE] 'g', [JP] 'j', 'p'", "c e g j p"},
        {"[EN] 'e', 'p', [EN] 'f', 'q'", "p f p p p"},
        {"[CZ] 'c', [cz] 'd', [JP] 'j'", "c - - j -"},
        {"'p', [GE] ''", "p p - p p"},
        {"[GE] '', 'p'", "p p p p p"},
    };
    for (const auto &[text, due] : cases) {
        std::string texts;
        for (std::uint32_t language = 0; language <= 4; ++language) {
            const std::string outline = Outline("def_section name = " + text + "; end_section", language);
            const std::string shown = outline.substr(9, outline.size() - 11);
            texts += (language == 0 ? "" : " ") + (shown.empty() ? "-" : shown);
        }
        EXPECT_EQ(texts, due) << text;
    }
    EXPECT_EQ(outline::Print(kq_cfg::DescribeTemplate({}, "def_section name = [CZ] 'c', 'p'; end_section", "")),
              " [ const'p']");
}

TEST(Compiler, NamesAndTextsAreCutAt255) {
    const std::string longest(255, 'x');
    const std::string longer(300, 'x');
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"keywords = '#';", " #"},
        {"channels = 1, 1, real, input, '#';", " 1..1:real:input:#"},
        {"def_section name = '#'; end_section", " [ const'#']"},
        {"def_section def_key label = '#'; end_key end_section", " [ { label='#'}]"},
        {"def_section var %#%; name = %#% + string { id = %#% ; default = %#% }; end_section",
         " [ variable text='#' + string id=# default=%#% %#=none]"},
        {"def_section name = options { option = '#' label = '#'; nedef = '#' } = %#%; end_section",
         " %#=none [ options nedef='#' #:# = %#%]"},
        {"def_section name = options { ch_type '#' = real } + dll { procedure = '#' }; end_section",
         " [ options ch_type type'#'real + dll #()]"},
    };
    const auto filled = [](std::string text, const std::string &with) {
        for (std::size_t at = text.find('#'); at != std::string::npos; at = text.find('#', at)) {
            text.replace(at, 1, with);
        }
        return text;
    };
    for (const auto &[text, outline] : cases) {
        EXPECT_EQ(Outline(filled(text, longest)), filled(outline, longest)) << text;
        EXPECT_EQ(Outline(filled(text, longer)), filled(outline, longest)) << text;
    }
}

TEST(Compiler, WhatWasReadBeforeAnErrorStays) {
    const std::string text =
        "no_channels; keywords = 'a'; def_section end_section def_section multiple; name = 'b'; name";
    const kq_cfg::TTemplate compiled = kq_cfg::DescribeTemplate({}, text, "");
    EXPECT_FALSE(compiled.report.result.ok);
    EXPECT_EQ(outline::Print(compiled), " a nochannels [] [ const'b' multiple]");
    EXPECT_TRUE(compiled.can_add_multiple);
    EXPECT_FALSE(kq_cfg::DescribeTemplate(
                     {}, "def_section name = number { id = %v% }; multiple; depend_on = %v%; end_section", "")
                     .can_add_multiple);
    EXPECT_EQ(kq_cfg::DescribeTemplate({}, "a\n\n  ", "").report.result.position, 2U);
    const kq_cfg::TTemplateResult good = kq_cfg::DescribeTemplate({}, "(**)\n\n  ", "").report.result;
    EXPECT_EQ(good.line, 3U);
    EXPECT_EQ(good.position, 3U);
}

TEST(Compiler, WithoutATableNothingHappens) {
    kq_pdt::CParSheetData data;
    kq_pdt::CSectionList sections;
    kq_pdt::CPdtCompiler compiler;
    compiler.Init(data, "def_section end_section", data.RootScope(), sections);
    kq_pdt::TCompileResult result;
    result.line = 77;
    EXPECT_FALSE(compiler.Compile(nullptr, nullptr, result));
    EXPECT_EQ(result.line, 77U);
    EXPECT_TRUE(sections.empty());
    compiler.Init(data, "keywords = 'a';", data.RootScope(), sections);
    EXPECT_FALSE(compiler.Compile(&data.Ranges(), nullptr, result));
    EXPECT_EQ(kq_base::ToUtf8(result.message.View()), Expected("řetězec"));
    EXPECT_EQ(result.position, 15U);
}

}  // namespace
