#include "tools/print/item_words.h"

std::string_view ItemKindWord(kq_cfg::TItemKind kind) {
    switch (kind) {
        case kq_cfg::TItemKind::kConst:
            return "const";
        case kq_cfg::TItemKind::kNumber:
            return "number";
        case kq_cfg::TItemKind::kString:
            return "string";
        case kq_cfg::TItemKind::kOptions:
            return "options";
        case kq_cfg::TItemKind::kDll:
            return "dll";
        case kq_cfg::TItemKind::kVariable:
            return "variable";
        case kq_cfg::TItemKind::kGroup:
            break;
    }
    return "group";
}
