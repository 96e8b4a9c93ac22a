#include "scanner/par_scanner.h"

#include <gtest/gtest.h>

#include "tests/scanner/nasty_texts.h"
#include "tests/scanner/reference_scanner.h"
#include "tests/scanner/scanner_walk.h"

namespace {

using namespace par_scanner;

void CheckAgainstReference(const std::string &text) {
    CTextParScanner scanner(text);
    CReferenceScanner reference(text);
    ASSERT_EQ(Walk(scanner, true), Walk(reference, true)) << text;
}

TEST(ParScannerAgainstReference, EveryShortText) {
    ForEveryText({"[", "]", "=", ",", " ", "a", "\n", "(*", "*)"}, 5, CheckAgainstReference);
    const auto behind_header = [](const std::string &text) { CheckAgainstReference("[s]\n" + text); };
    ForEveryText({"a", "=", ",", " ", "\n", "\r", "'", "(*", "*)"}, 5, behind_header);
    ForEveryText({"a=", "1", ".", "E", ",", " ", "\r\n", "<", ":"}, 5, behind_header);
    ForEveryText({"[a]", "(**)[b]", "(*\n*)", "\n", "k=", "v ", "12EF", "["}, 5, CheckAgainstReference);
}

}  // namespace
