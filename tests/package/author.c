/* A driver module in C against the installed headers: both text widths compile, and values have the right layout. */
#include "driver/kq_driver.h"
#include "driver/kq_driver_w.h"

#include <stddef.h>

_Static_assert(offsetof(KQValue, payload) == 4, "the payload follows the tag");
_Static_assert(sizeof(KQValue) == 8 + sizeof(void *), "room for a count and a pointer");

static int the_driver;

KQ_DRIVER_ENTRY uint32_t Version(void) { return 0x10000; }
KQ_DRIVER_ENTRY void *MakeDriver(void) { return &the_driver; }
KQ_DRIVER_ENTRY KQTruth LoadModulesTree(KQPath path, KQAddItemEntry *add_item, KQProgressEntry *progress,
                                        void *cancel) {
    (void)progress;
    (void)cancel;
    add_item(0, 1, 4, "name", 0, "", 2);
    return path.text[0] != 0;
}

static KQVersionEntry *const version = Version;
static KQMakeDriverEntry *const make_driver = MakeDriver;
static KQLoadModulesTreeEntry *const load_modules_tree = LoadModulesTree;

KQ_DRIVER_ENTRY uint32_t SystemEnvironment(uint32_t a) {
    return a + version() + (make_driver() != 0) + (load_modules_tree != 0) + KQ_TAG_COUNTED_TEXT;
}
