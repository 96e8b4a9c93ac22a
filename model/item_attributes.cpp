#include "model/item_attributes.h"

#include "model/texts.h"
#include "model/var_ref_item.h"
#include "platform/base/number_text.h"

namespace kq_pdt {

TChannelAttributes::TChannelAttributes() = default;
TChannelAttributes::~TChannelAttributes() = default;

const kq_base::TText &TItemAttributes::NoneText() const {
    static const kq_base::TText usual(texts::kNoneText);
    return rare_texts && rare_texts->none_text ? *rare_texts->none_text : usual;
}

TRareTexts &TItemAttributes::EditRareTexts() {
    if (!rare_texts) {
        rare_texts = std::make_unique<TRareTexts>();
    }
    return *rare_texts;
}

const std::vector<COptionEntry> &TItemAttributes::Entries() const {
    static const std::vector<COptionEntry> none;
    return options ? options->entries : none;
}

bool MapValue(const TValueMap &map, const TParValue &value, std::uint32_t &code) {
    if (map.size() == 1 && map.front().text.IsEmpty()) {
        code = map.front().code;
        return true;
    }
    const std::string digits = value.IsNumber() ? kq_base::DecimalText(value.number) : std::string();
    const std::string_view text = value.kind == TParKind::pvText ? value.text.View() : std::string_view(digits);
    for (const CValueMapEntry &row : map) {
        if (row.text == text) {
            code = row.code;
            return true;
        }
    }
    return false;
}

bool CEnableIf::Holds() const {
    TParValue value;
    expression_->Evaluate(value);
    return value.IsTrue();
}

}  // namespace kq_pdt
