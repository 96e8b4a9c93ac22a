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
#define KQ_FOUR_NAMES(ten)                     \
    KQ_EXPORT int Name##ten##0() { return 0; } \
    KQ_EXPORT int Name##ten##1() { return 1; } \
    KQ_EXPORT int Name##ten##2() { return 2; } \
    KQ_EXPORT int Name##ten##3() { return 3; }
KQ_FOUR_NAMES(1)
KQ_FOUR_NAMES(2)
KQ_FOUR_NAMES(3)
KQ_FOUR_NAMES(4)
KQ_FOUR_NAMES(5)
