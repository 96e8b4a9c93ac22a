/// A module with one name of each kind that an export table may hold.
#define KQ_EXPORT extern "C" __attribute__((visibility("default")))

extern "C" int OnlyInNeeded();

namespace {
int initialised = 0;
__attribute__((constructor)) void Initialise() { initialised = 1; }
}  // namespace

extern "C" {
__attribute__((visibility("hidden"))) int HiddenFunction() { return 1; }
__attribute__((weak)) int WeakImport();
}

KQ_EXPORT unsigned Version() { return 0x00030002; }
KQ_EXPORT int Initialised() { return initialised; }
KQ_EXPORT __attribute__((weak)) int WeakFunction() { return 2; }
extern "C" __attribute__((visibility("protected"))) int ProtectedFunction() { return 3; }
KQ_EXPORT int data_word;
int data_word = 4;
KQ_EXPORT int CallNeeded() { return OnlyInNeeded() + HiddenFunction() + (WeakImport != nullptr ? WeakImport() : 0); }

// Enough names for chains in every bucket.
#define KQ_NAME(number) \
    KQ_EXPORT int Name##number() { return number; }
// clang-format off
KQ_NAME(0) KQ_NAME(1) KQ_NAME(2) KQ_NAME(3) KQ_NAME(4)
KQ_NAME(5) KQ_NAME(6) KQ_NAME(7) KQ_NAME(8) KQ_NAME(9)
KQ_NAME(10) KQ_NAME(11) KQ_NAME(12) KQ_NAME(13) KQ_NAME(14)
KQ_NAME(15) KQ_NAME(16) KQ_NAME(17) KQ_NAME(18) KQ_NAME(19)
// clang-format on
