#ifndef KQ_DRIVER_TYPES_H
#define KQ_DRIVER_TYPES_H

/* What crosses the border between a driver module and its host, for C and C++. Authors include kq_driver.h or
   kq_driver_w.h, which build on this.

   Texts pass as a high bound, which is the highest valid index and so one less than the room in characters, and a
   pointer; whoever writes the text keeps within the bound and ends it with a zero. */

#include <stdint.h> /* NOLINT(modernize-deprecated-headers) */

#ifdef __cplusplus
extern "C" {
#endif

/* NOLINTBEGIN(modernize-*,readability-identifier-naming): C reads this header too. */

/* Marks what a module exports. */
#ifdef __cplusplus
#define KQ_DRIVER_ENTRY extern "C" __attribute__((visibility("default")))
#else
#define KQ_DRIVER_ENTRY __attribute__((visibility("default")))
#endif

/* A 16-bit character. */
#ifdef __cplusplus
typedef char16_t KQChar16;
#else
typedef uint_least16_t KQChar16;
#endif

/* The answer of an entry or callback: 8 bits that are true if any is set. */
typedef uint8_t KQTruth;

/* What a value holds. Scalars are the host's and the driver's to lay out; kq_def.h and value_scalars.h have the ways of
   this library's hosts for C++. */
enum KQTag {
    KQ_TAG_BOOLEAN = 2,
    KQ_TAG_SHORTCARD = 3,
    KQ_TAG_CARDINAL = 4,
    KQ_TAG_LONGCARD = 5,
    KQ_TAG_SHORTINT = 6,
    KQ_TAG_INTEGER = 7,
    KQ_TAG_LONGINT = 8,
    KQ_TAG_SHORTREAL = 9,
    KQ_TAG_REAL = 10,
    KQ_TAG_SHORT_TEXT = 11,  /* byte 4: pointer to a zero-terminated text; generations 1 and 2 */
    KQ_TAG_BUFFER = 12,      /* byte 7: pointer to the memory of a buffer */
    KQ_TAG_DSTRING = 14,     /* a channel of strings; values of this tag stay on the host's side */
    KQ_TAG_COUNTED_TEXT = 15 /* byte 4: count of characters, 32 bits; byte 8: pointer to them; generation 3 */
};

/* A tagged value. The bytes are counted from the start of the record, so the payload begins at byte 4. Pointers in it
   aren't aligned and go in and out by memcpy. */
typedef struct KQValue {
    uint32_t tag;
    uint8_t payload[4 + sizeof(void *)];
} KQValue;

/* A moment in time; hosts never look into it. */
typedef struct KQUTCStamp KQUTCStamp;

/* The way back from a driver to its host: the context that came with the callback, and what the two agreed on. */
typedef uint32_t KQDriverCallbackEntry(void *context, uint32_t number, void *pointer);

/* NOLINTEND(modernize-*,readability-identifier-naming) */

#ifdef __cplusplus
}
#endif

#endif
