#include "model/par_def.h"

namespace kq_pdt {

CParDef::CParDef(CDefNode *key) { Items().SetNode(key); }

bool CParDef::AppendText(kq_base::CTextBuffer &text) {
    text.Clear();
    return Items().AppendText(text);
}

std::unique_ptr<CParDef> CParDef::CloneFor(CDefNode *key) const {
    auto clone = std::make_unique<CParDef>(key);
    list_.CloneInto(clone->list_, nullptr);
    clone->separator_ = separator_;
    return clone;
}

void CParDef::ParameterChanged(const CVariable *variable, const TParValue &value, bool &ok) {
    Items().ParameterChanged(variable, value, ok);
}

}  // namespace kq_pdt
