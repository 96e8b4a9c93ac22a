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

/* A tagged value; the tags stand in kq_def.h. The payload starts at byte 4 of the record. Pointers in it aren't aligned
   and go in and out by memcpy:
     tag 11  byte 4: pointer to a zero-terminated text
     tag 12  byte 7: pointer to the memory of a buffer
     tag 15  byte 4: count of characters, 32 bits; byte 8: pointer to the characters */
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
