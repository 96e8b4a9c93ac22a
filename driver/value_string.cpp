#include "driver/value_string.h"

#include <new>

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

bool SetValueDString(TValue *value, const TDStringA *text) {
    try {
        if (TDStringA *string = ValueDString(*value)) {
            string->Assign(text->View());
        } else {
            *value = DStringValue(new TDStringA(text->View()));
        }
        return true;
    } catch (const std::bad_alloc &) {
        return false;
    }
}

void DisposeValueDString(TValue *value) {
    delete ValueDString(*value);
    *value = DStringValue(nullptr);
}

}  // namespace kq_def
