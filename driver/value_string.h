#pragma once

#include "driver/kq_def.h"
#include "platform/base/dynamic_string.h"
#include "platform/base/export.h"

/// Strings in values. A value of tag kTagDString holds the address of a TDStringA, or null for none. The value doesn't
/// own the string, as it may be copied freely: whoever made the string frees it.
///
///     TDStringA text;                              // the host's own, used for every call
///     kq_def::TValue value = kq_def::DStringValue(&text);
///     if (driver.GetInput(code, 7, &value, status, stamp)) { ... text.View() ... }
///
/// A host may also leave the string to the library: DStringValue(nullptr), and DisposeValueDString when it is read.
/// A failed input zeroes the value, so a host that wants to use such a string again keeps its address aside.
namespace kq_def {

/// A value that holds this string, not a copy of it.
KQ_API TValue DStringValue(TDStringA *string);
/// The string that a value holds; null for none and for a value of another tag.
KQ_API TDStringA *ValueDString(const TValue &value);

/// Makes a value hold a text: assigned to the string that the value holds, which allocates nothing as long as the text
/// fits into what that string had before, or to a new string, made by new, if the value holds none. No reference to the
/// given text is kept; it may be the value's own. False, and nothing has changed, if memory is short.
KQ_API bool SetValueDString(TValue *value, const TDStringA *text);
/// Frees a string that SetValueDString made, and leaves the value holding none.
KQ_API void DisposeValueDString(TValue *value);

}  // namespace kq_def
