// A driver module for tests, of generation KQ_GENERATION or, if that is 0, of all, with wide texts if KQ_WIDE is 1.
// What it does is up to the test (module_control.h).

#include <cstring>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <type_traits>

#include "driver/kq_driver.h"
#include "driver/kq_driver_path.h"
#include "driver/kq_driver_w.h"
#include "tests/driver/modules/module_control.h"

extern TModuleControl control;

#if KQ_WIDE
#define KQ_NAME(name) name##W
#define KQ_FORM(name) KQ##name##EntryW
#else
#define KQ_NAME(name) name
#define KQ_FORM(name) KQ##name##Entry
#endif
#define KQ_HAS(generation) (KQ_GENERATION == (generation) || KQ_GENERATION == 0)
/// Opens the definition of an entry; the compiler compares it with its form.
#define KQ_ENTRY(result, name)                   \
    KQ_DRIVER_ENTRY KQ_FORM(name) KQ_NAME(name); \
    result KQ_NAME(name)

namespace {

using CCharacter = std::conditional_t<KQ_WIDE, char16_t, char>;
using CText = std::basic_string<CCharacter>;
using CView = std::basic_string_view<CCharacter>;

int the_driver = 0;
CCharacter foreign_text[] = {'f', 'o', 'r', 'e', 'i', 'g', 'n', 0};

template <typename TNarrow, typename TWide>
auto &OfWidth(TNarrow &narrow, TWide &wide) {
    if constexpr (KQ_WIDE) {
        return wide;
    } else {
        return narrow;
    }
}
CText &Text() { return OfWidth(control.text, control.wide_text); }
CText &SecondText() { return OfWidth(control.second_text, control.wide_second_text); }
CText &Given() { return OfWidth(control.given, control.wide_given); }
CText &Present() { return OfWidth(control.present, control.wide_present); }

/// Logs a call: its name, a note if it came with another handle than ours, and its numbers.
template <typename... TNumbers>
void Log(const char *name, void *driver, TNumbers... numbers) {
    if (control.logs) {
        control.log += name;
        control.log += driver == &the_driver ? "" : " without a driver";
        ((control.log += " " + std::to_string(numbers)), ...);
        control.log += "\n";
    }
}

/// Writes a text of ours within the bound; that it fits is the test's business.
void Write(CView text, std::uint32_t high, CCharacter *to) {
    const std::size_t length = text.copy(to, high);
    to[length] = 0;
}

template <typename TField>
TField Get(const KQValue &value, std::size_t at) {
    TField field;
    std::memcpy(&field, value.payload + (at - 4), sizeof(field));
    return field;
}
template <typename TField>
void Put(KQValue &value, std::size_t at, TField field) {
    std::memcpy(value.payload + (at - 4), &field, sizeof(field));
}

void FillShortText(KQValue &value) {
    auto *room = Get<CCharacter *>(value, 4);
    switch (control.mischief) {
        case TMischief::kForeignText:
            return Put(value, 4, &foreign_text[0]);
        case TMischief::kSilent:
            return;
        case TMischief::kUnterminated:
            return std::fill_n(room, control.named_size, CCharacter{'x'}), void();
        default:
            Text().copy(room, Text().size());
            room[Text().size()] = 0;
    }
}

void AskForRoom(KQValue &value, std::uint32_t size) {
    Put<CCharacter *>(value, 8, nullptr);
    Put(value, 4, size);
}

void FillCountedText(KQValue &value) {
    const auto size = static_cast<std::uint32_t>(Text().size());
    auto *room = Get<CCharacter *>(value, 8);
    switch (control.mischief) {
        case TMischief::kForeignText:
            Put(value, 8, &foreign_text[0]);
            return Put(value, 4, std::uint32_t{7});
        case TMischief::kSilent:
            return;
        case TMischief::kNullTwice:
            return AskForRoom(value, Get<std::uint32_t>(value, 4) + 1000);
        case TMischief::kNamedSize:
            return AskForRoom(value, control.named_size);
        case TMischief::kCountAboveRoom:
            return Put(value, 4, control.named_size);
        default:
            if (size > Get<std::uint32_t>(value, 4)) {
                return AskForRoom(value, size);
            }
            Text().copy(room, size);
            Put(value, 4, size);
    }
}

/// Answers in the form that the tag asks for; a scalar is the channel's number, followed by 0xEE.
void Fill(std::uint32_t channel, KQValue &value) {
    if (value.tag == KQ_TAG_SHORT_TEXT) {
        ++control.text_calls;
        FillShortText(value);
    } else if (value.tag == KQ_TAG_COUNTED_TEXT) {
        ++control.text_calls;
        FillCountedText(value);
    } else if (value.tag == KQ_TAG_BUFFER) {
        auto *memory = Get<char *>(value, 7);
        memory[0] = 'B';
        Put(value, 7, memory + (control.mischief == TMischief::kMovedBuffer ? 1 : 0));
    } else {
        std::memset(value.payload, 0xEE, sizeof(value.payload));
        Put(value, 4, channel);
    }
}

/// Keeps a text that came in; gives the number by which the value appears in the log: a scalar's is its own.
std::uint32_t Take(const KQValue &value, CText &to) {
    if (value.tag == KQ_TAG_SHORT_TEXT) {
        to = Get<const CCharacter *>(value, 4);
        return static_cast<std::uint32_t>(to.size());
    }
    if (value.tag == KQ_TAG_COUNTED_TEXT) {
        const auto *text = Get<const CCharacter *>(value, 8);
        const auto count = Get<std::uint32_t>(value, 4);
        to.assign(text, count);
        return text[count] == 0 ? count : 0xFFFFFFFF;  // the caller puts a zero after it
    }
    if (value.tag == KQ_TAG_BUFFER) {
        return static_cast<std::uint8_t>(*Get<const char *>(value, 7));
    }
    return Get<std::uint32_t>(value, 4);
}

[[maybe_unused]] void MeetHost(void *context, KQDriverCallbackEntry *callback) {
    control.context = context;
    control.callback = callback;
}

}  // namespace

KQ_ENTRY(std::uint32_t, Version)() { return 0x20000 + KQ_GENERATION * 16 + KQ_WIDE; }

KQ_ENTRY(void, GetDriverInfo)(std::uint32_t high, CCharacter *text) {
    Log("GetDriverInfo", &the_driver, high);
    Write(Text(), high, text);
}

KQ_ENTRY(KQTruth, Check)
(std::uint32_t high, CCharacter *reason, std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d,
 std::uint32_t e) {
    Log("Check", &the_driver, high, a, b, c, d, e);
    Write(Text(), high, reason);
    return control.answer;
}

KQ_ENTRY(void *, MakeDriver)() {
    Log("MakeDriver", &the_driver);
    return control.mischief == TMischief::kNoDriver ? nullptr : &the_driver;
}

KQ_ENTRY(void, DisposeDriver)(void *driver) { Log("DisposeDriver", driver); }

#if KQ_HAS(1) || KQ_HAS(2)
KQ_ENTRY(KQTruth, Init)
(void *driver, std::uint32_t path_high, const CCharacter *path, std::uint32_t text_high, CCharacter *text,
 std::uint32_t zero, KQTruth first_instance, void *context, KQDriverCallbackEntry *callback) {
    Log("Init", driver, path_high, text_high, zero, first_instance);
    Given() = path;
    Present() = text;
    MeetHost(context, callback);
    if (control.answer == 0) {
        Write(Text(), text_high, text);
    }
    return control.answer;
}
#endif

#ifdef KQ_INIT3_IS_DATA
KQ_DRIVER_ENTRY int Init3;
int Init3 = 3;
#elif KQ_HAS(3)
KQ_ENTRY(void, Init3)
(void *driver, std::uint32_t instance, std::uint32_t name_high, const CCharacter *name, void *context,
 KQDriverCallbackEntry *callback) {
    Log("Init3", driver, instance, name_high);
    Given() = name;
    MeetHost(context, callback);
    if (control.calls_back) {
        callback(context, 0, nullptr);
    }
}
#endif

#if KQ_HAS(3)
KQ_ENTRY(KQTruth, ReadParameters)
(void *driver, std::uint32_t path_high, const CCharacter *path, std::uint32_t error_high, CCharacter *error,
 std::uint32_t *a, std::uint32_t *b, std::uint32_t detail_high, CCharacter *detail) {
    Log("ReadParameters", driver, path_high, error_high, detail_high);
    Given() = path;
    *a = 77;
    *b = 88;
    Write(Text(), error_high, error);
    Write(SecondText(), detail_high, detail);
#if !KQ_WIDE
    if (control.opens_par) {
        char name[KQ_FILE_SYSTEM_PATH_SIZE];
        return KQFileSystemPath(path, name, sizeof(name)) != 0 && std::ifstream(name).is_open() ? 1 : 0;
    }
#endif
    return control.answer;
}
#endif

KQ_ENTRY(KQTruth, QueryErrorCode)(void *driver, std::uint32_t code, std::uint32_t high, CCharacter *text) {
    Log("QueryErrorCode", driver, code, high);
    Write(Text(), high, text);
    return control.answer;
}

KQ_ENTRY(KQTruth, EnumerateChannels)
(void *driver, unsigned long *cookie, std::uint32_t *type, std::uint32_t *direction, std::uint32_t *first,
 std::uint32_t *count, std::uint8_t *flag) {
    Log("EnumerateChannels", driver, *cookie);
    *direction = 4;
    if (*cookie >= control.blocks) {
        return 0;
    }
    *type = KQ_TAG_REAL;
    *first = *cookie != 0 && *cookie == control.overlap ? 1 : static_cast<std::uint32_t>(*cookie * 10 + 1);
    *count = control.block_size;
    *flag = 1;
    ++*cookie;
    return 2;
}

KQ_ENTRY(KQTruth, GetChannelDescription)
(void *driver, std::uint32_t channel, std::uint32_t high, CCharacter *text, std::uint32_t detail_high,
 CCharacter *detail) {
    Log("GetChannelDescription", driver, channel, high, detail_high);
    Write(Text(), high, text);
    Write(SecondText(), detail_high, detail);
    return control.answer;
}

KQ_ENTRY(void, Run)(void *driver) {
    Log("Run", driver);
    if (control.mischief == TMischief::kThrows) {
        throw std::runtime_error("thrown");
    }
}

KQ_ENTRY(void, Stop)(void *driver) { Log("Stop", driver); }
KQ_ENTRY(void, Done)(void *driver) { Log("Done", driver); }

KQ_ENTRY(KQTruth, BufferInfo)(void *driver, std::uint32_t a, std::uint8_t b, std::uint32_t c) {
    Log("BufferInfo", driver, a, b, c);
    return control.answer;
}

KQ_ENTRY(void, SetBufferAddr)(void *driver, std::uint32_t a, void *memory) {
    Log("SetBufferAddr", driver, a, *static_cast<char *>(memory));
}

KQ_ENTRY(void, InputRequestStart)(void *driver) { Log("InputRequestStart", driver); }
KQ_ENTRY(void, InputRequest)(void *driver, std::uint32_t channel) { Log("InputRequest", driver, channel); }
KQ_ENTRY(void, InputRequestCompleted)(void *driver) { Log("InputRequestCompleted", driver); }

KQ_ENTRY(KQTruth, InputFinalized)(void *driver, std::uint32_t a, std::uint32_t *code) {
    Log("InputFinalized", driver, a);
    *code = control.code;
    return control.answer;
}

KQ_ENTRY(KQTruth, InputOOBDataQuery)(void *driver, unsigned long *a, std::uint32_t *b) {
    Log("InputOOBDataQuery", driver);
    *a = 55;
    *b = 66;
    return control.answer;
}

#if KQ_HAS(1)
KQ_ENTRY(void, GetInput)(void *driver, std::uint32_t channel, KQValue *value) {
    Log("GetInput", driver, channel, value->tag);
    Fill(channel, *value);
}

KQ_ENTRY(void, OutputRequest)(void *driver, std::uint32_t channel, KQValue value) {
    Log("OutputRequest", driver, channel, value.tag, Take(value, Given()));
}
#endif

#if KQ_HAS(2)
KQ_ENTRY(void, GetInput2)
(void *driver, std::uint32_t channel, KQValue *value, std::uint32_t *status, KQUTCStamp *stamp) {
    Log("GetInput2", driver, channel, value->tag, stamp != nullptr);
    *status = 222;
    Fill(channel, *value);
}

KQ_ENTRY(void, OutputRequest2)
(void *driver, std::uint32_t channel, KQValue value, std::uint32_t status, KQUTCStamp *stamp) {
    Log("OutputRequest2", driver, channel, value.tag, Take(value, Given()), status, stamp != nullptr);
}
#endif

#if KQ_HAS(3)
KQ_ENTRY(void, GetInput3)
(void *driver, std::uint32_t channel, KQValue *value, std::uint32_t *status, KQUTCStamp *stamp, std::uint32_t *code) {
    Log("GetInput3", driver, channel, value->tag, stamp != nullptr, *code);
    *status = 333;
    *code = control.code;
    Fill(channel, *value);
}

KQ_ENTRY(void, OutputRequest3)
(void *driver, std::uint32_t channel, KQValue value, std::uint32_t status, KQUTCStamp *stamp) {
    Log("OutputRequest3", driver, channel, value.tag, Take(value, Given()), status, stamp != nullptr);
}
#endif

KQ_ENTRY(void, OutputRequestStart)(void *driver) { Log("OutputRequestStart", driver); }
KQ_ENTRY(void, OutputRequestCompleted)(void *driver) { Log("OutputRequestCompleted", driver); }

KQ_ENTRY(KQTruth, OutputFinalized)(void *driver, std::uint32_t a, std::uint32_t *code) {
    Log("OutputFinalized", driver, a);
    *code = control.code;
    return control.answer;
}

KQ_ENTRY(void, DriverProc)
(void *driver, std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d, std::uint32_t e) {
    Log("DriverProc", driver, a, b, c, d, e);
}

#if KQ_HAS(1) || KQ_HAS(2)
KQ_ENTRY(void, QueryProc)(void *driver, KQValue in, KQValue *out) {
    Log("QueryProc", driver, in.tag, Take(in, Given()), out->tag, Take(*out, Present()));
    Fill(in.tag, *out);
}
#endif

#if KQ_HAS(3)
KQ_ENTRY(void, QueryProc3)(void *driver, KQValue in, KQValue present, KQValue *out) {
    Log("QueryProc3", driver, in.tag, Take(in, Given()), present.tag, Take(present, Present()), out->tag);
    Fill(in.tag, *out);
}
#endif
