#ifndef KQ_DRIVER_W_H
#define KQ_DRIVER_W_H

/* The entry points of a driver module whose texts are strings of 16-bit characters: those of kq_driver.h, each with a
   W after its name. A module is wide if it exports VersionW and no Version; it exports all others in this form. */

#include "driver/kq_driver_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* NOLINTBEGIN(modernize-*,readability-identifier-naming): C reads this header too. */

typedef uint32_t KQVersionEntryW(void);
typedef void KQGetDriverInfoEntryW(uint32_t high, KQChar16 *text);
typedef KQTruth KQCheckEntryW(uint32_t high, KQChar16 *reason, uint32_t a, uint32_t b, uint32_t c, uint32_t d,
                              uint32_t e);
typedef void *KQMakeDriverEntryW(void);
typedef void KQDisposeDriverEntryW(void *driver);
typedef KQTruth KQInitEntryW(void *driver, uint32_t path_high, const KQChar16 *path, uint32_t text_high, KQChar16 *text,
                             uint32_t zero, KQTruth first_instance, void *context, KQDriverCallbackEntry *callback);
typedef void KQInit3EntryW(void *driver, uint32_t instance, uint32_t name_high, const KQChar16 *name, void *context,
                           KQDriverCallbackEntry *callback);
typedef KQTruth KQReadParametersEntryW(void *driver, uint32_t path_high, const KQChar16 *path, uint32_t error_high,
                                       KQChar16 *error, uint32_t *a, uint32_t *b, uint32_t detail_high,
                                       KQChar16 *detail);
typedef KQTruth KQQueryErrorCodeEntryW(void *driver, uint32_t code, uint32_t high, KQChar16 *text);
typedef KQTruth KQEnumerateChannelsEntryW(void *driver, unsigned long *cookie, uint32_t *type, uint32_t *direction,
                                          uint32_t *first, uint32_t *count, uint8_t *flag);
typedef KQTruth KQGetChannelDescriptionEntryW(void *driver, uint32_t channel, uint32_t high, KQChar16 *text,
                                              uint32_t detail_high, KQChar16 *detail);
typedef void KQRunEntryW(void *driver);
typedef void KQStopEntryW(void *driver);
typedef void KQDoneEntryW(void *driver);
typedef KQTruth KQBufferInfoEntryW(void *driver, uint32_t a, uint8_t b, uint32_t c);
typedef void KQSetBufferAddrEntryW(void *driver, uint32_t a, void *memory);
typedef void KQInputRequestStartEntryW(void *driver);
typedef void KQInputRequestEntryW(void *driver, uint32_t channel);
typedef void KQInputRequestCompletedEntryW(void *driver);
typedef KQTruth KQInputFinalizedEntryW(void *driver, uint32_t a, uint32_t *code);
typedef KQTruth KQInputOOBDataQueryEntryW(void *driver, unsigned long *a, uint32_t *b);
typedef void KQGetInputEntryW(void *driver, uint32_t channel, KQValue *value);
typedef void KQGetInput2EntryW(void *driver, uint32_t channel, KQValue *value, uint32_t *status, KQUTCStamp *stamp);
typedef void KQGetInput3EntryW(void *driver, uint32_t channel, KQValue *value, uint32_t *status, KQUTCStamp *stamp,
                               uint32_t *code);
typedef void KQOutputRequestStartEntryW(void *driver);
typedef void KQOutputRequestEntryW(void *driver, uint32_t channel, KQValue value);
typedef void KQOutputRequest2EntryW(void *driver, uint32_t channel, KQValue value, uint32_t status, KQUTCStamp *stamp);
typedef void KQOutputRequest3EntryW(void *driver, uint32_t channel, KQValue value, uint32_t status, KQUTCStamp *stamp);
typedef void KQOutputRequestCompletedEntryW(void *driver);
typedef KQTruth KQOutputFinalizedEntryW(void *driver, uint32_t a, uint32_t *code);
typedef void KQDriverProcEntryW(void *driver, uint32_t a, uint32_t b, uint32_t c, uint32_t d, uint32_t e);
typedef void KQQueryProcEntryW(void *driver, KQValue in, KQValue *out);
typedef void KQQueryProc3EntryW(void *driver, KQValue in, KQValue present, KQValue *out);

typedef struct KQPathW {
    KQChar16 text[260];
} KQPathW;
typedef void KQAddItemEntryW(uint32_t parent, uint32_t key, uint32_t name_length, const KQChar16 *name,
                             uint32_t text_length, const KQChar16 *text, uint32_t flags);
typedef void KQProgressEntryW(uint32_t length1, const KQChar16 *line1, uint32_t length2, const KQChar16 *line2,
                              uint32_t length3, const KQChar16 *line3);

typedef KQTruth KQLoadModulesTreeEntryW(KQPathW path, KQAddItemEntryW *add_item, KQProgressEntryW *progress,
                                        void *cancel);

/* NOLINTEND(modernize-*,readability-identifier-naming) */

#ifdef __cplusplus
}
#endif

#endif
