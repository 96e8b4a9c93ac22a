#include <gtest/gtest.h>

#include <map>
#include <string>

#include "template/language/expression_builder.h"

namespace {

using kq_pdt::CVariable;
using kq_pdt::TExprKind;

/// Knows variables by their names only; each has an address of its own.
class CNames final : public kq_pdt::CExpressionContext {
public:
    void ReadVariable(std::string_view /*name*/, TParValue &value) override { value = TParValue::Undefined(); }
    CVariable *FindVariable(std::string_view name) override {
        return reinterpret_cast<CVariable *>(&names_[std::string(name)]);
    }
    std::uint32_t NewChannels(std::uint32_t count) override { return count; }

private:
    std::map<std::string, char> names_;
};

TEST(Expression, RefersToItsVariablesButNotToThoseOfAnArgument) {
    CNames names;
    kq_pdt::CExpressionBuilder builder;
    const auto refer = [&builder](const char *name) {
        builder.AddOperand(TExprKind::kReference, TParValue::Text(name));
    };
    // %first% + (new_channel(%inner%) + %last%)
    builder.Attach();
    refer("first");
    builder.SetNodeKind(TExprKind::kAdd);
    builder.Attach();
    const auto saved = builder.BeginArgument();
    refer("inner");
    builder.EndArgument(saved);
    builder.SetNodeKind(TExprKind::kAdd);
    refer("last");
    const auto expression = builder.Finish(names);
    ASSERT_EQ(expression->Nodes().size(), 6U);
    EXPECT_TRUE(expression->ReferencesVariable(names.FindVariable("first")));
    EXPECT_FALSE(expression->ReferencesVariable(names.FindVariable("inner")));
    EXPECT_TRUE(expression->ReferencesVariable(names.FindVariable("last")));
    EXPECT_FALSE(expression->ReferencesVariable(names.FindVariable("other")));
    EXPECT_FALSE(expression->ReferencesVariable(nullptr));
}

}  // namespace
