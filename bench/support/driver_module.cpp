// A driver module of generation 3 that does next to nothing: what is measured is the way to it and back. Wide if
// KQ_WIDE is 1.
#include <cstring>
#include <iterator>
#include <type_traits>

#include "driver/kq_driver.h"
#include "driver/kq_driver_w.h"

#if KQ_WIDE
#define KQ_NAME(name) name##W
#else
#define KQ_NAME(name) name
#endif
#define KQ_ENTRY(result, name) KQ_DRIVER_ENTRY result KQ_NAME(name)

using CCharacter = std::conditional_t<KQ_WIDE, char16_t, char>;

namespace {

int the_driver = 0;
constexpr CCharacter kText[] = {'T', 'e', 'p', 'l', 'o', 't', 'a', ' ', 'k', 'o',
                                't', 'l', 'e', ' ', '8', '1', ',', '5', ' ', 'C'};

}  // namespace

KQ_ENTRY(uint32_t, Version)() { return 1; }
KQ_ENTRY(void, GetDriverInfo)(uint32_t /*high*/, CCharacter *text) { *text = 0; }
KQ_ENTRY(KQTruth, Check)
(uint32_t /*high*/, CCharacter * /*reason*/, uint32_t /*a*/, uint32_t /*b*/, uint32_t /*c*/, uint32_t /*d*/,
 uint32_t /*e*/) {
    return 1;
}
KQ_ENTRY(void *, MakeDriver)() { return &the_driver; }
KQ_ENTRY(void, DisposeDriver)(void * /*driver*/) {}
KQ_ENTRY(void, Init3)
(void * /*driver*/, uint32_t /*instance*/, uint32_t /*high*/, const CCharacter * /*name*/, void * /*context*/,
 KQDriverCallbackEntry * /*callback*/) {}
KQ_ENTRY(void, Done)(void * /*driver*/) {}
KQ_ENTRY(void, InputRequest)(void * /*driver*/, uint32_t /*channel*/) {}
KQ_ENTRY(void, InputRequestCompleted)(void * /*driver*/) {}
KQ_ENTRY(KQTruth, InputFinalized)(void * /*driver*/, uint32_t /*a*/, uint32_t * /*code*/) { return 1; }
KQ_ENTRY(void, OutputRequestCompleted)(void * /*driver*/) {}
KQ_ENTRY(KQTruth, OutputFinalized)(void * /*driver*/, uint32_t /*a*/, uint32_t * /*code*/) { return 1; }
KQ_ENTRY(void, DriverProc)
(void * /*driver*/, uint32_t /*a*/, uint32_t /*b*/, uint32_t /*c*/, uint32_t /*d*/, uint32_t /*e*/) {}

/// A scalar is the channel's number, a text always the same.
KQ_ENTRY(void, GetInput3)
(void * /*driver*/, uint32_t channel, KQValue *value, uint32_t *status, KQUTCStamp * /*stamp*/, uint32_t *code) {
    *status = 0;
    *code = 0;
    if (value->tag == KQ_TAG_COUNTED_TEXT) {
        CCharacter *room = nullptr;
        std::memcpy(&room, value->payload + 4, sizeof(room));
        std::memcpy(room, kText, sizeof(kText));
        const uint32_t count = std::size(kText);
        std::memcpy(value->payload, &count, sizeof(count));
    } else {
        std::memcpy(value->payload, &channel, sizeof(channel));
    }
}

KQ_ENTRY(void, OutputRequest3)
(void *driver, uint32_t channel, KQValue value, uint32_t /*status*/, KQUTCStamp * /*stamp*/) {
    *static_cast<int *>(driver) = static_cast<int>(channel + value.tag);
}
