/// A program built against the installed library alone: every public header, and one call of each of them that has
/// something to call.
#include <cstdio>

#include "configurator/kq_cfg.h"
#include "platform/base/code_page.h"

int main() {
    const kq_cfg::TEvaluation sum = kq_cfg::EvaluateExpression("2 + 3", {});
    if (!sum.ok || sum.value.number != 5) {
        std::puts("the expression went wrong");
        return 1;
    }
    const kq_cfg::TMatch match = kq_cfg::MatchValueList("'ch' + number", "ch12");
    if (!match.ok || !match.matched || match.items.size() != 2) {
        std::puts("the match went wrong");
        return 1;
    }
    if (kq_base::ToUtf8("\xE8") != "\xC4\x8D") {
        std::puts("the code page went wrong");
        return 1;
    }
    std::puts("the installed library works");
    return 0;
}
