#include "tools/console/text_argument.h"

#include "platform/base/code_page.h"
#include "tools/console/diagnostics.h"

bool ToCodePage(TConsole &console, std::string_view what, std::string_view typed, std::string &text) {
    if (kq_base::FromUtf8(typed, text)) {
        return true;
    }
    PrintError(console, what, "this isn't UTF-8, or holds a character that code page 1250 lacks");
    return false;
}
