#include "configurator/disabled_reason.h"

#include <gtest/gtest.h>

#include "configurator/kq_cfg.h"
#include "tests/support/model_session.h"

namespace {

TEST(DisabledReason, SaysConditionValuesAndWhoSetsThem) {
    CModelSession session;
    ASSERT_TRUE(session.Translate(
        "def_section name = 'Global'; required;"
        " def_key name = 'count'; par = number { id = %count% }; end_key end_section"
        " def_section var %mode%; var %none%; name = 'Line' + number;"
        " def_key name = 'Transport'; label = 'Přenos'; par = options { option = 'TCP'; option = 'SERIAL'"
        " label = 'Sériový'; label = 'Druh'; id = %mode% }; end_key"
        " def_key name = 'Port'; par = number { enable_if %mode% = 'TCP' and not (%none% = nedef or %mode% = 'x''y') }"
        " + ':' + number { enable_if 2 > 3 }; par = number { optional; id = %none% }; end_key"
        " def_key var %own%; name = 'row' + number; multiple; label = 'Řádek'; par = number { id = %own% };"
        " par = string { enable_if %own% > %count% + 1 }; end_key end_section",
        "[Global]\ncount = 5\n[Line7]\nTransport = SERIAL\nrow2 = 3\n"))
        << session.MessageLines() << session.TemplateResult().message.View();
    struct TRow {
        std::size_t section;
        std::size_t key;
        std::uint32_t cell;
        const char *reason;
    };
    const std::vector<TRow> rows = {
        {0, 0, 1, ""},
        {1, 0, 1, ""},
        {1, 1, 1,
         "Podmínka: %mode% = 'TCP' and not (%none% = nedef or %mode% = 'x''y'). Nyní: %mode% = 'SERIAL' (Druh, sekce "
         "Line7); %none% = nedefinován (Port, sekce Line7)"},
        {1, 1, 2, "Podmínka: 2 > 3"},
        {1, 1, 3, ""},
        {1, 1, 4, ""},
        {1, 2, 1, ""},
        {1, 2, 3,
         "Podmínka: %own% > %count% + 1. Nyní: %own% = 3 (Řádek, řádek row2, sekce Line7); %count% = 5 (count, sekce "
         "Global)"},
    };
    for (const TRow &row : rows) {
        const std::string reason =
            kq_pdt::DisabledReason(session.Section(row.section), &session.Key(row.section, row.key), row.cell);
        EXPECT_EQ(kq_base::ToUtf8(reason), row.reason) << row.key << ":" << row.cell;
    }
    EXPECT_EQ(kq_pdt::DisabledReason(session.Section(1), nullptr, 1), "");
    EXPECT_EQ(kq_pdt::DisabledReason(session.Section(1), nullptr, 9), "");
}

/// A tree at random; depth bounds it.
kq_cfg::TExpr RandomTree(std::uint32_t depth, std::uint32_t &state) {
    const auto below = [&state](std::uint32_t limit) {
        state = state * 1103515245U + 12345U;
        return (state >> 16U) % limit;
    };
    static const std::vector<std::string> kWords = {
        "or", "and", "not", "=", "<>", "<", ">=", "+", "-", "*", "/", "mod", "neg"};
    kq_cfg::TExpr tree;
    if (depth == 0 || below(4) == 0) {
        tree.kind = below(2) == 0 ? kq_cfg::TExprKind::kNumber : kq_cfg::TExprKind::kText;
        tree.number = tree.kind == kq_cfg::TExprKind::kNumber ? below(9) : 0;
        tree.text = tree.kind == kq_cfg::TExprKind::kText ? "it's" : "";
        return tree;
    }
    tree.kind = kq_cfg::TExprKind::kOperator;
    tree.text = kWords[below(static_cast<std::uint32_t>(kWords.size()))];
    const bool unary = tree.text == "not" || tree.text == "neg";
    for (std::uint32_t operand = 0; operand < (unary ? 1U : 2U); ++operand) {
        tree.operands.push_back(RandomTree(depth - 1, state));
    }
    return tree;
}

bool SameTree(const kq_cfg::TExpr &left, const kq_cfg::TExpr &right) {
    return left.kind == right.kind && left.number == right.number && left.text == right.text &&
           std::equal(left.operands.begin(), left.operands.end(), right.operands.begin(), right.operands.end(),
                      SameTree);
}

TEST(ExpressionText, ReadsAsTheSameTree) {
    std::uint32_t state = 1;
    for (int round = 0; round < 3000; ++round) {
        const kq_cfg::TExpr tree = RandomTree(4, state);
        const std::string text = kq_cfg::ExpressionText(tree);
        const kq_cfg::TEvaluation read = kq_cfg::EvaluateExpression(text, {});
        ASSERT_TRUE(read.ok && SameTree(read.tree, tree)) << text << ": " << kq_base::ToUtf8(read.message);
    }
    const std::vector<std::string> as_they_are = {"%a% = 'x' and not %b% = 1 or %c%", "%a% = %b% + 2 * 3",
                                                  "0 = (%a% + 1) mod 2", "10 - (3 - 2)", "not (%a% or %b%)"};
    for (const std::string &text : as_they_are) {
        const kq_cfg::TEvaluation read = kq_cfg::EvaluateExpression(text, {{"a", {}}, {"b", {}}, {"c", {}}});
        EXPECT_EQ(kq_cfg::ExpressionText(read.tree), text);
    }
}

}  // namespace
