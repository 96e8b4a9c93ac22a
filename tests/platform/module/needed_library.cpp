/// A library that the test module needs.
extern "C" __attribute__((visibility("default"))) int OnlyInNeeded() { return 1; }
