#include "driver/text_room.h"

#include <new>

namespace kq_drv {

template <typename TCharacter>
bool CTextRoom<TCharacter>::Grow(std::uint32_t needed) {
    if (needed <= capacity_ || needed > kMaximalCapacity) {
        return false;
    }
    const std::uint32_t capacity = (needed + kStep - 1) / kStep * kStep;
    std::unique_ptr<TCharacter[]> characters(new (std::nothrow) TCharacter[capacity + 1]());
    if (characters == nullptr) {
        return false;
    }
    characters_ = std::move(characters);
    capacity_ = capacity;
    return true;
}

template <typename TCharacter>
void CTextRoom<TCharacter>::Deliver(std::basic_string_view<TCharacter> text, kq_def::TValue *value) {
    if constexpr (sizeof(TCharacter) == 1) {
        delivered_.Assign(text);
    } else {
        delivered_.Text().resize(text.size());
        kq_base::Narrow(text, delivered_.Text().data());
    }
    kq_def::SetValueDString(value, &delivered_);
}

template <typename TCharacter>
std::basic_string_view<TCharacter> CTextRoom<TCharacter>::ForDriver(const TDStringA *string, TPlace place) {
    const std::string_view text = ViewOf(string);
    if constexpr (sizeof(TCharacter) == 1) {
        return text;
    } else {
        std::u16string &widened = widened_[place];
        widened.resize(text.size());
        kq_base::Widen(text, widened.data());
        return widened;
    }
}

template class CTextRoom<char>;
template class CTextRoom<char16_t>;

}  // namespace kq_drv
