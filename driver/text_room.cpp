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
bool CTextRoom<TCharacter>::Deliver(std::basic_string_view<TCharacter> text, kq_def::TValue *value) {
    try {
        if constexpr (sizeof(TCharacter) == 1) {
            delivered_.Assign(text);
        } else {
            delivered_.Text().resize(text.size());
            kq_base::Narrow(text, delivered_.Text().data());
        }
    } catch (const std::bad_alloc &) {
        return false;
    }
    return kq_def::SetValueDString(value, &delivered_);
}

template <typename TCharacter>
bool CTextRoom<TCharacter>::ForDriver(const TDStringA *string, TRole role, kq_def::TValue &value) {
    const std::string_view text = ViewOf(string);
    if constexpr (sizeof(TCharacter) == 1) {
        value = CountedValue(text.data(), text.size());
    } else {
        std::u16string &widened = widened_[static_cast<std::size_t>(role)];
        try {
            widened.resize(text.size());
        } catch (const std::exception &) {  // also a length that 16-bit characters can't have
            return false;
        }
        kq_base::Widen(text, widened.data());
        value = CountedValue(widened.data(), widened.size());
    }
    return true;
}

template class CTextRoom<char>;
template class CTextRoom<char16_t>;

}  // namespace kq_drv
