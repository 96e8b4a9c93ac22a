#include "driver/value_string.h"

namespace kq_def {

TValue DStringValue(TDStringA *string) {
    TValue value;
    value.tag = kTagDString;
    value.PutField(TValue::kDStringAt, string);
    return value;
}

TDStringA *ValueDString(const TValue &value) {
    return value.tag == kTagDString ? value.GetField<TDStringA *>(TValue::kDStringAt) : nullptr;
}

void SetValueDString(TValue *value, const TDStringA *text) {
    if (TDStringA *string = ValueDString(*value)) {
        string->Assign(text->View());
    } else {
        *value = DStringValue(new TDStringA(text->View()));
    }
}

void DisposeValueDString(TValue *value) {
    delete ValueDString(*value);
    *value = DStringValue(nullptr);
}

}  // namespace kq_def
