#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "model/sheet_data.h"
#include "platform/base/code_page.h"
#include "template/compiler.h"
#include "tests/template/outline.h"

namespace {

/// `@` in a template marks where its reader is after the token at which the error is found; it isn't compiled.
constexpr char kMark = '@';

struct TTextPosition {
    std::uint32_t line = 1;
    std::uint32_t position = 1;
};

TTextPosition PositionOf(const std::string &text, std::size_t at) {
    TTextPosition found;
    for (std::size_t index = 0; index < at; ++index) {
        ++found.position;
        if (text[index] == '\n') {
            ++found.line;
            found.position = 1;
        }
    }
    return found;
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

struct TFailure {
    std::string text;
    std::string message;
};

TEST(Compiler, FailuresWithTheirPositions) {
    const std::string s = "def_section ";
    const std::string k = "def_section def_key ";
    const std::string n = "def_section name = number { ";
    const std::vector<TFailure> cases = {
        // Top level
        {"abc@", Expected("def_section")},
        {"end_section@", Expected("def_section")},
        {"Def_section@", Expected("def_section")},
        {"\n\n  ;@", Expected("def_section")},
        {"no_channels required@", Expected(";")},
        {"keywords 'a'@", Expected("=")},
        {"keywords = 'a', b@", Expected("řetězec")},
        {"keywords = ;@", Expected("řetězec")},
        {"keywords = 'a' 'b'@", Expected(";")},
        {"ver_from = 50041@;", kVersion},
        {"ver_from = 50040.0@;", kVersion},
        {"ver_from = 4294967296@;", kVersion},
        {"ver_from = 1e3@;", kVersion},
        {"ver_from = abc@;", Expected("číslo")},
        {"ver_from 1@;", Expected("=")},
        {"ver_from = 1 ,@", Expected(";")},
        {"channels 1@", Expected("=")},
        {"channels = a@", Expected("číslo")},
        {"channels = 1.0@", Expected("číslo")},
        {"channels = 1 2@", Expected(",")},
        {"channels = 1, 4294967296@", Expected("číslo")},
        {"channels = 1, 2;@", Expected(",")},
        {"channels = 1, 2, number@", Expected("string shortcard boolean")},
        {"channels = 1, 2, Real@", Expected("string shortcard boolean")},
        {"channels = 1, 2, begin@", Expected("string shortcard boolean")},
        {"channels = 1, 2, real;@", Expected(",")},
        {"channels = 1, 2, real, real@", Expected("input output bidirectional")},
        {"channels = 1, 2, real, ch_direction@", Expected("input output bidirectional")},
        {"channels = 1, 2, real, input 'a'@", Expected(";")},
        {"channels = 1, 2, real, input, 5@", Expected("řetězec")},
        {"channels = 1, 2, real, input, [CZ 'a'@", Expected("řetězec")},
        {"channels = 1, 2, real, input, 'a', ;@", Expected("řetězec")},
        // Section
        {s + "number@", kSection},
        {s + "end_key@", kSection},
        {s + "@", kSection},
        {s + "name 'a'@", Expected("=")},
        {s + "name = 'a'; name =\n'b'@;", ""},
        {s + "required name@", Expected(";")},
        {s + "multiple =@", Expected(";")},
        {s + "channels end_section@", Expected(";")},
        {"no_channels;" + s + "channels@ ;", kNoChannels},
        {"no_channels;" + k + "channels@ ;", kNoChannels},
        {s + "depend_on %@", Expected("=")},
        {s + "depend_on = v@", Expected("%")},
        {s + "depend_on = %v@%;", kUndeclared},
        {s + "def_key var %v%; end_key name = %v@%;", kUndeclared},
        {s + "var %v%; depend_on = %v@%;", kUndeclared},
        {s + "depend_on = %name@%;", Expected("identifikátor")},
        {s + "name = number { id = %v% }; depend_on = %v% end_section@", Expected(";")},
        {s + "name = number { id = %v% }; depend_on = %v ;@", Expected("%")},
        {s + "name = number { id = %v% }; depend_on = %v%; depend_on = %v@%;", "Vic jak jeden depend_on"},
        {s + "name = number { id = %v% }; depend_on = %v%; depend_on = %w@%;", kUndeclared},
        {s + "channels_group ,@", kSection},
        {s + "channels_group ; ;@", kSection},
        // Key
        {k + "required@", kKey},
        {k + "enable_if@ 1", kKey},
        {k + "@", kKey},
        {k + "label 'a'@", Expected("=")},
        {k + "label = 5@", kText},
        {k + "label = 'a' end_key@", Expected(";")},
        {k + "par number@", Expected("=")},
        {k + "name = 'a'; name = 'b'@", ""},
        {k + "end_key ;@", kSection},
        {k + "end_section@", kKey},
        // Value lists
        {s + "name = 5@;", kItem},
        {s + "name = true@;", kItem},
        {s + "name = 'a' + ;@", kItem},
        {s + "name = 'a' = v@", Expected("%")},
        {s + "name = 'a' = %5@", Expected("identifikátor")},
        {s + "name = 'a' = %v;@", Expected("%")},
        {s + "name = 'a' = %v% end_section@", Expected(";")},
        {s + "name = %5@", Expected("identifikátor")},
        {s + "name = %v@%;", kUndeclared},
        {s + "var %v%; name = %v ;@", Expected("%")},
        {s + "name = 'a', 5@", kText},
        {s + "name = [ 5@", Expected("identifikátor")},
        {s + "name = [ end@", Expected("identifikátor")},
        {s + "name = [CZ 'a'@", Expected("]")},
        {s + "name = [CZ] a@", Expected("řetězec")},
        {s + "name = 'a' 'b'@;", kSection},
        // Attributes
        {n + "abc@", kAttribute},
        {n + ";@", kAttribute},
        {n + "label = 'a';;@", kAttribute},
        {n + "default 5@", Expected("=")},
        {n + "default = }@", kExpression},
        {n + "default = %v@%", kUndeclared},
        {n + "type true }@", Expected(",")},
        {n + "direction ,@", kExpression},
        {n + "ch_type %5@%", ""},
        {n + "ch_type %v =@", Expected("%")},
        {n + "ch_type 'a' integer@", Expected("=")},
        {n + "ch_type = 5@", "Očekáváno jedno z  string"},
        {n + "ch_type = abc@", "Očekáváno jedno z  string"},
        {n + "ch_direction = def_section@", "Očekáváno jedno z  string"},
        {n + "range_from 5@", Expected("=")},
        {n + "range_from = a@", ""},
        {n + "range_to = -@5", ""},
        {n + "id %@v%", Expected("=")},
        {n + "id = v@", Expected("%")},
        {n + "id = %'v'@%", ""},
        {n + "id = %v }@", Expected("%")},
        {n + "option 'a'@", Expected("=")},
        {n + "option = 5@", kText},
        {n + "option = 'a' label 'b'@", Expected("=")},
        {n + "option = 'a' label = }@", kText},
        {n + "nedef 'a'@", Expected("=")},
        {n + "procedure = a@", kText},
        {n + "load_pdt =@ 1", "Očekáváno jedno z  = ;"},
        {n + "optional =@", "Očekáváno jedno z  = ;"},
        {n + "ch_number =@", "Očekáváno jedno z  = ;"},
        {n + "read_all =@", "Očekáváno jedno z  = ;"},
        {n + "floating =@", "Očekáváno jedno z  = ;"},
        {n + "no_case_sensitive =@", "Očekáváno jedno z  = ;"},
        {n + "ch_from = 1@", "Chybná definice channels_group"},
        {n + "ch_to = ;@", "Chybná definice channels_group"},
        {s + "channels_group { ch_from = }@", kExpression},
        {n + "ch_count }@", "Očekáváno jedno z  ; ="},
        {n + "ch_count ,@", "Očekáváno jedno z  ; ="},
        {n + "ch_count = a@", Expected("číslo")},
        {n + "enable_if =@", kExpression},
        {n + "optional bubble@", kSection},
        {n + "write_if_all = 'a'@", Expected("%")},
        // Variables
        {s + "var v@", kSection},
        {s + "var % 5@", Expected("identifikátor")},
        {s + "var %v ;@", Expected("%")},
        {s + "var %v%, %name@%", Expected("identifikátor")},
        {s + "var %v%, name@", Expected("=")},
        {s + "var %v%;;@", kSection},
        {s + "var %v% {};;@", kSection},
        {s + "var %v% { ;@", "Očekáváno jedno z  } init_value"},
        {s + "var %v% { init_value 5@", Expected("=")},
        {s + "var %v% { init_value = true@", "Očekáváno jedno z  řetězec číslo create_new_channel"},
        {s + "var %v% { init_value = 5 }@", Expected(";")},
        // What can't be read as a token is the end of the text inside a section
        {s + "name = 'ab@\n'; end_section", kItem},
        {k + "par = number { default = 5 + 1e+@x", kExpression},
        {s + "required; " + "'" + std::string(1023, 'x') + "x@'", kSection},
        {s + "name = 'a'; (* open (* comment *) end_section@", kSection},
    };
    for (const TFailure &each : cases) {
        const std::size_t mark = each.text.find(kMark);
        std::string text = each.text;
        text.erase(mark, 1);
        const TTextPosition position = PositionOf(text, mark);
        const kq_cfg::TTemplateResult result = kq_cfg::DescribeTemplate({}, text, "").report.result;
        EXPECT_FALSE(result.ok) << each.text;
        EXPECT_EQ(kq_base::ToUtf8(result.message), each.message) << each.text;
        EXPECT_EQ(std::to_string(result.line) + ":" + std::to_string(result.position),
                  std::to_string(position.line) + ":" + std::to_string(position.position))
            << each.text;
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
        {"def_section multiple; required; required; def_key channels; multiple; end_key end_section",
         " [ required multiple { multiple channels}]"},
        {"def_section def_key par = 'a' label = 'L', 'M'; par = 'b' end_key name = number + 'x' end_section",
         " [ number + const'x' { label='L' | const'a' | const'b'}]"},
        // Value lists
        {"def_section name = 'a' + string + dll + options + number end_section",
         " [ const'a' + string + dll + options + number]"},
        {"def_section name = 'a', 'b' required; end_section", " [ const'a' required]"},
        {"def_section name = '', 'b'; end_section", " [ const'b']"},
        {"def_section name = 'a' = %v%; end_section", " %v=none [ const'a' = %v%]"},
        {"def_section var %v%; name = %v% {comment = 'c'} + %v%; end_section",
         " [ variable text='v' comment='c' + variable text='v' %v=none]"},
        {"def_section var %v%; def_key var %v%; name = %v%; par = number { id = %v% } = %v%; end_key end_section",
         " %v=none [ %v=none { variable text='v' %v=none | number id=v = %v%}]"},
        // Blocks
        {"def_section name = 'a' { } + 'b' {}; end_section", " [ const'a' + const'b']"},
        {"def_section name = number { optional; }; end_section", " [ number optional]"},
        {"def_section name = number { optional required; end_section", " [ number optional required]"},
        {"def_section name = number { optional + 'a' { comment = 'c' ; } end_section",
         " [ number optional + const'a' comment='c']"},
        {"def_section name = number { write_if_all = %v%; end_section", " %v=none [ all number = %v%]"},
        {"def_section name = string { label='l'; bubble='b'; comment='c'; nedef='n'; no_case_sensitive; default='d' + "
         "'e'};"
         "end_section",
         " [ string label='l' bubble='b' comment='c' nedef='n' anycase default=('d' + 'e')]"},
        {"def_section name = number { range_from = 5; range_to = 1.5; range_to = 4294967296; range_from = 6e0 }; "
         "end_section",
         " [ number 5..0]"},
        {"def_section name = number { range_from = 5; range_to = 9; channel_range; load_pdt; floating }; end_section",
         " [ number 1..2147483647]"},
        {"def_section name = number { id = %v%; id = %w%; }; end_section", " %v=none [ number id=v]"},
        {"def_section name = number { enable_if true; enable_if %v% = 1 }; var %v%; end_section",
         "error " + kUndeclared},
        {"def_section var %v%; name = number { enable_if true; enable_if %v% = 1 }; end_section",
         " [ number if=(%v% = 1) %v=none]"},
        {"def_section name = options { option = 'a' label = 'A'; option = 'b', 'c'; option = '' label = 'none' };"
         "end_section",
         " [ options a:A b:b :none]"},
        {"def_section name = dll { procedure = 'p'; procedure = 'q' }; end_section", " [ dll p() q()]"},
        // Channels
        {"def_section name = number { ch_from } + number { ch_to } + number { ch_number; ch_count; read_all }; "
         "end_section",
         " [ number 1..2147483647 ch_from + number 1..2147483647 ch_to + number 1..2147483647 ch_number ch_count "
         "read_all]"},
        {"def_section name = number { ch_count = 4 } + number { ch_count = 4.5; ch_count; } end_section",
         " [ number ch_count count=4 + number ch_count]"},
        {"def_section name = options { ch_type '1' = boolean; ch_type = real; ch_direction %d% 'x' = input } "
         "end_section",
         " %d=none [ options ch_type ch_direction type'1'boolean type''real direction'x'input direction%d]"},
        {"def_section channels_group end_section", " [ <group>]"},
        {"def_section var %v%; channels_group { ch_from = %v%; ch_to = %v% + 3; type %v% = 1, real; type true, abc } ; "
         "end_section",
         " [ %v=none <group from=%v% to=(%v% + 3) type:real=(%v% = 1) type:-=true>]"},
        {"def_section channels_group { ch_from = 1 } def_key channels_group {} name = 'a' { ch_to = 2; ch_from = 3; "
         "ch_from = 4;"
         "ch_to = 5 }; end_key end_section",
         " [ <group from=1> { const'a' <group from=3 to=2>}]"},
        {"def_section channels_group { ch_from = 1 } end_section def_section name = 'a' { ch_from = 2; ch_from = 3 } "
         "end_section",
         " [ <group from=1 to=2>] [ const'a']"},
        // Variables
        {"def_section var %b%, %a%; var %a% var end_section", " [ %a=none %b=none]"},
        {"def_section var %a%; , %b% {}, %c% {};, end_section", " [ %a=none %b=none %c=none]"},
        {"def_section var %a% { init_value = 5; init_value = 6.5; }, %b% { init_value = 'x'; } %c%; end_section",
         "error " + kSection},
        {"def_section var %a% { init_value = 5; init_value = 6.5; }, %b% { init_value = 'x'; }; var %c% { init_value = "
         "create_new_channel; }; end_section",
         " [ %a=5 %b='x' %c=channel]"},
        // Declared in the root by one section, used by the next
        {"def_section name = number { id = %v% }; end_section def_section name = 'a' + %v%; depend_on = %v%; "
         "end_section",
         " %v=none [ number id=v] [v: const'a' + variable text='v']"},
    };
    for (const TAccepted &each : cases) {
        EXPECT_EQ(Outline(each.text), each.outline) << each.text;
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
