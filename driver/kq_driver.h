#ifndef KQ_DRIVER_H
#define KQ_DRIVER_H

/* The entry points of a driver module whose texts are bytes in code page 1250, as function types. A module exports them
   under the names between KQ and Entry, with C linkage:

       KQ_DRIVER_ENTRY uint32_t Version(void) { return 0x30000; }
       static KQVersionEntry *const version = Version;  // lets the compiler check the form

   A host refuses a module that lacks Version, GetDriverInfo, Check, MakeDriver, DisposeDriver, Init or Init3, Done,
   InputRequest, InputRequestCompleted, InputFinalized, OutputRequestCompleted, OutputFinalized, DriverProc, one of the
   GetInput forms or one of the OutputRequest forms. All others may be left out. kq_driver_w.h has the 16-bit form. */

#include "driver/kq_driver_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* NOLINTBEGIN(modernize-*,readability-identifier-naming): C reads this header too. */

/* Version of the module. */
typedef uint32_t KQVersionEntry(void);

/* One line on what the module is. */
typedef void KQGetDriverInfoEntry(uint32_t high, char *text);

/* May the module run under this host? Three numbers of the host's, then 4 and 2. False with the reason in the
   text. */
typedef KQTruth KQCheckEntry(uint32_t high, char *reason, uint32_t a, uint32_t b, uint32_t c, uint32_t d, uint32_t e);

/* Makes a driver; its handle is any pointer but 0, and comes back with every call that follows. */
typedef void *KQMakeDriverEntry(void);

/* Ends a driver; nothing follows. */
typedef void KQDisposeDriverEntry(void *driver);

/* Generation 1: reads the parameter file. The text is the driver's name on entry and, with false, the error on
   return. */
typedef KQTruth KQInitEntry(void *driver, uint32_t path_high, const char *path, uint32_t text_high, char *text,
                            uint32_t zero, KQTruth first_instance, void *context, KQDriverCallbackEntry *callback);

/* Generation 3: which instance this is, from 0, and its name. Reads nothing yet. */
typedef void KQInit3Entry(void *driver, uint32_t instance, uint32_t name_high, const char *name, void *context,
                          KQDriverCallbackEntry *callback);

/* Generation 3: reads the parameter file. The two numbers and the second text are the driver's to use. */
typedef KQTruth KQReadParametersEntry(void *driver, uint32_t path_high, const char *path, uint32_t error_high,
                                      char *error, uint32_t *a, uint32_t *b, uint32_t detail_high, char *detail);

/* The text of one of the driver's codes; false for a code that isn't its own. */
typedef KQTruth KQQueryErrorCodeEntry(void *driver, uint32_t code, uint32_t high, char *text);

/* The next block of channels: 0 in the cookie asks for the first one, the driver keeps its position there. False
   after the last. */
typedef KQTruth KQEnumerateChannelsEntry(void *driver, unsigned long *cookie, uint32_t *type, uint32_t *direction,
                                         uint32_t *first, uint32_t *count, uint8_t *flag);

/* What a channel is. */
typedef KQTruth KQGetChannelDescriptionEntry(void *driver, uint32_t channel, uint32_t high, char *text,
                                             uint32_t detail_high, char *detail);

/* The rounds begin. */
typedef void KQRunEntry(void *driver);

/* The rounds are over. */
typedef void KQStopEntry(void *driver);

/* Gives back what the driver holds; DisposeDriver follows. */
typedef void KQDoneEntry(void *driver);

/* Buffers: the host's numbers pass unchanged. */
typedef KQTruth KQBufferInfoEntry(void *driver, uint32_t a, uint8_t b, uint32_t c);

/* Where a buffer's memory lies. */
typedef void KQSetBufferAddrEntry(void *driver, uint32_t a, void *memory);

/* An input round begins. */
typedef void KQInputRequestStartEntry(void *driver);

/* A channel that the round wants. */
typedef void KQInputRequestEntry(void *driver, uint32_t channel);

/* The round's list is whole. */
typedef void KQInputRequestCompletedEntry(void *driver);

/* Are the values there? */
typedef KQTruth KQInputFinalizedEntry(void *driver, uint32_t a, uint32_t *code);

/* Is there data that nobody asked for? */
typedef KQTruth KQInputOOBDataQueryEntry(void *driver, unsigned long *a, uint32_t *b);

/* Generation 1: a channel's value, in the form that the tag asks for. */
typedef void KQGetInputEntry(void *driver, uint32_t channel, KQValue *value);

/* Generation 2: with status and time. */
typedef void KQGetInput2Entry(void *driver, uint32_t channel, KQValue *value, uint32_t *status, KQUTCStamp *stamp);

/* Generation 3: a code other than 0 is a failure. */
typedef void KQGetInput3Entry(void *driver, uint32_t channel, KQValue *value, uint32_t *status, KQUTCStamp *stamp,
                              uint32_t *code);

/* An output round begins. */
typedef void KQOutputRequestStartEntry(void *driver);

/* Generation 1: a value to write. */
typedef void KQOutputRequestEntry(void *driver, uint32_t channel, KQValue value);

/* Generation 2: with status and time. */
typedef void KQOutputRequest2Entry(void *driver, uint32_t channel, KQValue value, uint32_t status, KQUTCStamp *stamp);

/* Generation 3: texts come counted, of any length. */
typedef void KQOutputRequest3Entry(void *driver, uint32_t channel, KQValue value, uint32_t status, KQUTCStamp *stamp);

/* The round's list is whole. */
typedef void KQOutputRequestCompletedEntry(void *driver);

/* Are the values written? */
typedef KQTruth KQOutputFinalizedEntry(void *driver, uint32_t a, uint32_t *code);

/* Between the driver and its host; the numbers pass unchanged. */
typedef void KQDriverProcEntry(void *driver, uint32_t a, uint32_t b, uint32_t c, uint32_t d, uint32_t e);

/* Generation 1: a question and its answer. */
typedef void KQQueryProcEntry(void *driver, KQValue in, KQValue *out);

/* Generation 3: the answer's present value comes along. */
typedef void KQQueryProc3Entry(void *driver, KQValue in, KQValue present, KQValue *out);

/* The device search. An item of key 0 is the root; flags: 2 with a check mark, 4 the same but only one among its
   siblings, 0 a plain item. The three texts of the progress are three lines. */
typedef struct KQPath {
    char text[260];
} KQPath;
typedef void KQAddItemEntry(uint32_t parent, uint32_t key, uint32_t name_length, const char *name, uint32_t text_length,
                            const char *text, uint32_t flags);
typedef void KQProgressEntry(uint32_t length1, const char *line1, uint32_t length2, const char *line2, uint32_t length3,
                             const char *line3);
typedef KQTruth KQIsCheckedEntry(uint32_t key);

/* Searches for devices, on a thread of the host's. The path names the file that takes what is chosen. True if
   something was found; the cancel event, once set, asks to come back soon. */
typedef KQTruth KQLoadModulesTreeEntry(KQPath path, KQAddItemEntry *add_item, KQProgressEntry *progress, void *cancel);

/* The choice is made: asks which items are checked and writes them into the file. */
typedef void KQPutModulesToParEntry(KQIsCheckedEntry *is_checked);

/* The search is over, whatever became of it. */
typedef void KQDoneTreeDataEntry(void);

/* NOLINTEND(modernize-*,readability-identifier-naming) */

#ifdef __cplusplus
}
#endif

#endif
