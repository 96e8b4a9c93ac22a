#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "configurator/kq_cfg.h"
#include "platform/base/code_page.h"
#include "tests/support/pieces.h"
#include "tests/template/outline.h"

namespace {

const std::string kAmbiguous = "Nejednoznačný výraz, použijte závorky";
const std::string kTooComplex = "Příliš složitý výraz";

/// The tree of an expression, or the error with the position in the expression after which it was found.
std::string Tree(const std::string &expression) {
    const std::string before = "def_section var %v%, %long_name%; name = number { default =\n";
    const kq_cfg::TTemplate compiled = kq_cfg::DescribeTemplate({}, before + expression + "\n; } end_section", "");
    const kq_cfg::TTemplateResult &result = compiled.report.result;
    if (!result.ok) {
        const std::string position = result.line == 2 ? std::to_string(result.position - 1) : "end";
        return kq_base::ToUtf8(result.message) + " @" + position;
    }
    return outline::Print(compiled.sections.at(0).name->at(0).default_value.value());
}

std::string Value(const std::string &expression, const kq_cfg::TVariables &variables = {}) {
    const kq_cfg::TEvaluation evaluation = kq_cfg::EvaluateExpression(expression, variables);
    return evaluation.ok ? outline::Print(evaluation.value) : "error " + kq_base::ToUtf8(evaluation.message);
}

TEST(Expression, TreesFollowTheBuildingSteps) {
    const std::string factor = "Očekáváno jedno z  číslo řetězec % ( true false";
    const std::string undeclared = "Nedefinovaný identifikátor.";
    const std::string trees =
        "1 -> 1; 'it''s' -> 'it's'; %v% -> %v%; nedef -> nedef; ((true)) -> true; 10 - 3 - 2 -> (10 - (3 - 2)); "
        "100 / (10 / 2) -> (100 / (10 / 2)); 1 + 2 * 3 -> (1 + (2 * 3)); 1 + 2 = 3 -> (1 + (2 = 3)); "
        "(1 + 2) = 3 -> ((1 + 2) = 3); 3 = 1 + 2 -> (3 = (1 + 2)); 1 < 2 = 3 -> (1 < (2 = 3)); "
        "1 = 2 <> 3 -> (1 = (2 <> 3)); (1 * 2) + 3 -> ((1 * 2) + 3); 1 or 2 or 3 -> (1 or (2 or 3)); "
        "1 and 2 and 3 -> (1 and (2 and 3)); not 1 and 2 -> (not(1) and 2); not 1 = 2 + 3 -> not((1 = (2 + 3))); "
        "1 * 2 and 3 * 4 -> ((1 * 2) and (3 * 4)); 1 * - 2 -> (1 * neg(2)); - - 1 -> neg(neg(1)); "
        "-(1 + 2) -> neg((1 + 2)); 1 mod -(2) or -3 -> ((1 mod neg(2)) or neg(3)); 4294967295 -> 4294967295; 007 -> 7";
    for (const std::string &tree : Pieces(trees, "; ")) {
        const std::size_t arrow = tree.find(" -> ");
        EXPECT_EQ(Tree(tree.substr(0, arrow)), tree.substr(arrow + 4));
    }
    // The mark is after the token at which the error is found; without one that is the end.
    const std::vector<std::pair<std::string, std::vector<std::string>>> failures = {
        {"Očekáván  )", {"(1", "(1 2@)", "new_channel(1"}},
        {"Očekávána funkce", {"abc@(1)", "New_channel@(1)"}},
        {"Očekáván  (", {"new_channel 1@"}},
        {"Očekáváno jedno z  identifikátor", {"%name@%", "%5@%"}},
        {"Očekáván  %", {"%v +@ 1"}},
        {kAmbiguous,
         {"1 * 2 * 3@", "1 * 2 + 3@", "1 * 2 mod (@3)", "1 / 2 = 'abc'@", "1 / 2 < %@v%", "1 * 2 - new_channel@(1)",
          "1 * 2 * -@3", "1 + 2 * 3 + 4@", "- 1 + 2@", "- 1 = 2@", "1 * -2 * 3@"}},
        {factor, {"not not@ 1", "1 + not@ 2", "", "()@", "1.5@", "1e2@", "4294967296@", "new_channel()@"}},
        {undeclared, {"%w@%"}}};
    for (const auto &[message, expressions] : failures) {
        for (std::string expression : expressions) {
            const std::size_t mark = expression.find('@');
            expression.erase(std::min(mark, expression.size()), 1);
            const std::string position = mark == std::string::npos ? "end" : std::to_string(mark);
            EXPECT_EQ(Tree(expression), message + " @" + position);
        }
    }
    EXPECT_EQ(Tree("1 = 2 and 3 < 4 or not 5 >= 6 and 7"), "(((1 = 2) and (3 < 4)) or (not((5 >= 6)) and 7))");
    EXPECT_EQ(Tree("new_channel(1 + 2) * 3"), "(new_channel((1 + 2)) * 3)");
    EXPECT_EQ(Tree("2 - new_channel(new_channel(%v%))"), "(2 - new_channel(new_channel(%v%)))");
    EXPECT_EQ(Tree("'" + std::string(300, 'x') + "'"), "'" + std::string(255, 'x') + "'");
}

std::string Repeat(const std::string &text, int times) {
    std::string result;
    for (int time = 0; time < times; ++time) {
        result += text;
    }
    return result;
}

TEST(Expression, NestsTwoHundredLevels) {
    struct TNesting {
        std::string open, middle, close;
    };
    const std::vector<TNesting> nestings = {
        {"(", "1", ")"},    {"- ", "1", ""},    {"1 + ", "1", ""},          {"true and ", "true", ""},
        {"1 or ", "1", ""}, {"1 <= ", "1", ""}, {"new_channel(", "1", ")"}, {"", "1", " = 1"},
    };
    for (const TNesting &each : nestings) {
        for (int levels = 199; levels <= 201; ++levels) {
            const std::string text = Repeat(each.open, levels) + each.middle + Repeat(each.close, levels);
            EXPECT_EQ(Tree(text).starts_with(kTooComplex), levels > 200) << each.open << levels;
        }
    }
    // A level of parentheses with an operator in it is two.
    EXPECT_FALSE(Tree(Repeat("1 + (", 100) + "1" + Repeat(")", 100)).starts_with(kTooComplex));
    EXPECT_TRUE(Tree(Repeat("1 + (", 101) + "1" + Repeat(")", 101)).starts_with(kTooComplex));
    // Operators that turn up above a finished operand count as well: each left operand grows by two levels.
    EXPECT_FALSE(Tree(Repeat("(", 100) + "1" + Repeat(" + 1)", 100)).starts_with(kTooComplex));
    EXPECT_TRUE(Tree(Repeat("(", 101) + "1" + Repeat(" + 1)", 101)).starts_with(kTooComplex));
    EXPECT_TRUE(Tree(Repeat("not (", 100000)).starts_with(kTooComplex));
}

/// What comes of a chain of operands, described by its outcome instead of by building steps: `or` above `and` above
/// `not`, each to the right; below that all operators alike to the right, but nothing may follow a product's right
/// operand or a minus.
class CChainReference {
public:
    struct TOperand {
        std::string text;       ///< as written, without `not`
        std::string printed;    ///< its tree
        std::size_t first_end;  ///< length of its first token
        bool is_minus;
        bool is_negated;  ///< `not` precedes it
    };

    void Add(const std::string &operation, const TOperand &operand) {
        text_ += operands_.empty() ? "" : " " + operation + " ";
        text_ += operand.is_negated ? "not " : "";
        positions_.push_back(text_.size() + operand.first_end);
        text_ += operand.text;
        operands_.push_back(operand);
        operations_.push_back(operation);
    }
    const std::string &Text() const { return text_; }
    std::string Expected() {
        const std::string tree = Level(0, operands_.size(), "or");
        return error_ == 0 ? tree : kAmbiguous + " @" + std::to_string(error_);
    }

private:
    std::string Level(std::size_t from, std::size_t to, const std::string &operation) {
        for (std::size_t at = from + 1; at < to; ++at) {
            if (operations_[at] == operation) {
                const std::string left = operation == "or" ? Level(from, at, "and") : Term(from, at);
                return "(" + left + " " + operation + " " + Level(at, to, operation) + ")";
            }
        }
        return operation == "or" ? Level(from, to, "and") : Term(from, to);
    }
    std::string Term(std::size_t from, std::size_t to) {
        return operands_[from].is_negated ? "not(" + Chain(from, to, false) + ")" : Chain(from, to, false);
    }
    std::string Chain(std::size_t from, std::size_t to, bool full) {
        if (from + 1 == to) {
            return operands_[from].printed;
        }
        const std::string &operation = operations_[from + 1];
        if ((full || operands_[from].is_minus) && error_ == 0) {
            error_ = positions_[from + 1];
        }
        const bool product = operation == "*";
        return "(" + operands_[from].printed + " " + operation + " " + Chain(from + 1, to, product) + ")";
    }

    std::string text_;
    std::vector<TOperand> operands_;
    std::vector<std::string> operations_;
    std::vector<std::size_t> positions_;
    std::size_t error_ = 0;
};

TEST(Expression, AllChainsOfFourOperands) {
    const std::vector<std::string> operations = {"-", "*", "=", "and", "or"};
    const std::vector<CChainReference::TOperand> operands = {
        {"7", "7", 1, false, false},
        {"-%v%", "neg(%v%)", 1, true, false},
        {"('a' + 'b')", "('a' + 'b')", 1, false, false},
        {"(1)", "1", 1, false, true},
    };
    const std::size_t choices = operations.size() * operands.size();
    std::size_t checked = 0;
    for (std::size_t number = 0; number < operands.size() * choices * choices * choices; ++number) {
        CChainReference reference;
        std::size_t rest = number * operations.size();
        bool sensible = true;
        for (int index = 0; index < 4; ++index, rest /= choices) {
            const std::string &operation = operations[rest % operations.size()];
            const CChainReference::TOperand &operand = operands[rest / operations.size() % operands.size()];
            sensible = sensible && (!operand.is_negated || index == 0 || operation == "and" || operation == "or");
            reference.Add(operation, operand);
        }
        if (sensible) {
            ASSERT_EQ(Tree(reference.Text()), reference.Expected()) << reference.Text();
            ++checked;
        }
    }
    EXPECT_GT(checked, 15000U);
}

TEST(Expression, Values) {
    const kq_cfg::TVariables variables = {{"none", {kq_cfg::TValueKind::kUndefined, "", 0, false}},
                                          {"v", {kq_cfg::TValueKind::kNumber, "", 5, false}}};
    const std::vector<std::pair<std::string, std::vector<std::string>>> cases = {
        {"6", {"1 + 2 + 3"}},
        {"9", {"10 - 3 - 2"}},
        {"4294967294", {"3 - 5"}},
        {"1", {"4294967295 + 2"}},
        {"65536", {"65536 * 65537"}},
        {"3", {"17 / 5"}},
        {"2", {"17 mod 5"}},
        {"nedef", {"1 / 0", "1 mod 0", "false and nedef", "true or %none%", "not nedef"}},
        {"4294967295", {"-1"}},
        {"0", {"-0"}},
        {"none", {"-'a'", "-nedef", "1 + 2 = 3", "not 1", "new_channel(nedef)", "new_channel(0)", "new_channel('1')"}},
        {"'a'", {"'a' + 'b'"}},
        {"false",
         {"false - true", "'a' < 'B'", "'' <> ''", "true and false", "false or false", "not true", "%none% <> nedef",
          "%v% = nedef", "%v% <> nedef"}},
        {"true",
         {"4294967295 > 1", "'a' <= 'a'", "'ab' > 'a'", "(1 + 2) = 3", "not 1 = 2 and true", "true or false",
          "%none% = nedef", "not %v% = nedef", "%v% = 5"}},
        {Value("new_channel(3)"), {"new_channel(3) + new_channel(2) * 0"}},
        {"error Očekáván  ", {"1 2"}}};
    for (const auto &[due, expressions] : cases) {
        for (const std::string &expression : expressions) {
            EXPECT_EQ(Value(expression, variables), due) << expression;
        }
    }
    EXPECT_EQ(Value("(new_channel(3) + 3) = new_channel(1)"), "true");
    EXPECT_EQ(Value("%t%", {{"t", {kq_cfg::TValueKind::kText, std::string(300, 'x'), 0, false}}}),
              "'" + std::string(255, 'x') + "'");
}

/// Kinds of results by kinds of operands: u undefined, n none, t text, # number, b truth value; * is b for operands of
/// equal value under = and the like, T and F truth values.
TEST(Expression, KindsOfOperands) {
    const std::array<std::string, 5> operands = {"nedef", "(true = true)", "'a'", "1", "true"};
    struct TTable {
        std::string operations;
        std::array<std::string, 5> rows;
    };
    const std::array<TTable, 5> tables = {{
        {"+ - * / mod", {"uuuuu", "unnnn", "untnn", "unn#n", "unnnb"}},
        {"and or", {"uuuuu", "unnnn", "unnnn", "unnnn", "unnnb"}},
        {"=", {"TFFFF", "Fnnnn", "FnTnn", "FnnTn", "Fnnnn"}},
        {"<= >=", {"FFFFF", "Fnnnn", "FnTnn", "FnnTn", "Fnnnn"}},
        {"<> < >", {"FFFFF", "Fnnnn", "FnFnn", "FnnFn", "Fnnnn"}},
    }};
    const auto kind_of = [](const std::string &value, char due) {
        if (due == 'T' || due == 'F') {
            return value == "true" ? 'T' : value == "false" ? 'F' : '?';
        }
        if (value == "nedef" || value == "none") {
            return value == "none" ? 'n' : 'u';
        }
        return value == "'a'" ? 't' : value == "true" || value == "false" ? 'b' : '#';
    };
    for (const TTable &table : tables) {
        for (const std::string &operation : Pieces(table.operations, " ")) {
            for (std::size_t left = 0; left < operands.size(); ++left) {
                for (std::size_t right = 0; right < operands.size(); ++right) {
                    const std::string text = operands[left] + " " + operation + " " + operands[right];
                    const char due = table.rows[left][right];
                    EXPECT_EQ(kind_of(Value(text), due), due) << text;
                }
            }
        }
    }
}

}  // namespace
