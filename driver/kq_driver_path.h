#ifndef KQ_DRIVER_PATH_H
#define KQ_DRIVER_PATH_H

/* Opening a file by a path that a host gave, for modules with 8-bit texts, in C and C++. Such a path is in code page
   1250, with / or \ between the names; the file system's names are UTF-8. A name that a host couldn't bring into the
   code page comes as the file system has it.

       char path_here[KQ_FILE_SYSTEM_PATH_SIZE];
       FILE *file = KQFileSystemPath(path, path_here, sizeof(path_here)) ? fopen(path_here, "rb") : NULL; */

#include <stddef.h> /* NOLINT(modernize-deprecated-headers) */

/* NOLINTBEGIN(modernize-*,readability-identifier-naming): C reads this header too. */

/* Room for the longest path, of 259 characters, each of which takes up to three bytes. */
enum { KQ_FILE_SYSTEM_PATH_SIZE = 3 * 259 + 1 };

/* Is a name valid UTF-8? Czech letters in code page 1250 practically never are. */
static inline int KQIsUtf8(const char *name, size_t length) {
    size_t index = 0;
    while (index < length) {
        const unsigned lead = (unsigned char)name[index++];
        unsigned low = 0x80;
        unsigned high = 0xBF;
        unsigned following = 0;
        if (lead >= 0x80) {
            if (lead < 0xC2 || lead > 0xF4) {
                return 0;
            }
            following = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
            low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : low;
            high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : high;
        }
        for (; following > 0; --following) {
            const unsigned byte = index < length ? (unsigned char)name[index++] : 0;
            if (byte < low || byte > high) {
                return 0;
            }
            low = 0x80;
            high = 0xBF;
        }
    }
    return 1;
}

/* Writes one character of code page 1250 as UTF-8, up to three bytes; gives their number. */
static inline size_t KQPutUtf8(unsigned char character, char *to) {
    /* The upper half of the code page. */
    static const unsigned short kUpper[128] = {
        0x20AC, 0x0081, 0x201A, 0x0083, 0x201E, 0x2026, 0x2020, 0x2021, 0x0088, 0x2030, 0x0160, 0x2039, 0x015A,
        0x0164, 0x017D, 0x0179, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x0098, 0x2122,
        0x0161, 0x203A, 0x015B, 0x0165, 0x017E, 0x017A, 0x00A0, 0x02C7, 0x02D8, 0x0141, 0x00A4, 0x0104, 0x00A6,
        0x00A7, 0x00A8, 0x00A9, 0x015E, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x017B, 0x00B0, 0x00B1, 0x02DB, 0x0142,
        0x00B4, 0x00B5, 0x00B6, 0x00B7, 0x00B8, 0x0105, 0x015F, 0x00BB, 0x013D, 0x02DD, 0x013E, 0x017C, 0x0154,
        0x00C1, 0x00C2, 0x0102, 0x00C4, 0x0139, 0x0106, 0x00C7, 0x010C, 0x00C9, 0x0118, 0x00CB, 0x011A, 0x00CD,
        0x00CE, 0x010E, 0x0110, 0x0143, 0x0147, 0x00D3, 0x00D4, 0x0150, 0x00D6, 0x00D7, 0x0158, 0x016E, 0x00DA,
        0x0170, 0x00DC, 0x00DD, 0x0162, 0x00DF, 0x0155, 0x00E1, 0x00E2, 0x0103, 0x00E4, 0x013A, 0x0107, 0x00E7,
        0x010D, 0x00E9, 0x0119, 0x00EB, 0x011B, 0x00ED, 0x00EE, 0x010F, 0x0111, 0x0144, 0x0148, 0x00F3, 0x00F4,
        0x0151, 0x00F6, 0x00F7, 0x0159, 0x016F, 0x00FA, 0x0171, 0x00FC, 0x00FD, 0x0163, 0x02D9};
    const unsigned code = character < 0x80 ? character : kUpper[character - 0x80];
    if (code < 0x80) {
        to[0] = (char)code;
        return 1;
    }
    if (code < 0x800) {
        to[0] = (char)(0xC0 | (code >> 6));
        to[1] = (char)(0x80 | (code & 0x3F));
        return 2;
    }
    to[0] = (char)(0xE0 | (code >> 12));
    to[1] = (char)(0x80 | ((code >> 6) & 0x3F));
    to[2] = (char)(0x80 | (code & 0x3F));
    return 3;
}

/* Writes the file system's form of a host's path, with a terminator, into a room of that size in bytes. 1; or 0, and an
   empty text, if the room doesn't suffice. The file is the host's, so its name isn't looked for in other cases. */
static inline int KQFileSystemPath(const char *path, char *to, size_t size) {
    size_t written = 0;
    size_t left = 0; /* of the current name */
    int as_it_is = 0;
    for (; *path != 0; ++path) {
        const int separator = *path == '/' || *path == '\\';
        char bytes[3] = {'/', 0, 0};
        size_t count = 1;
        size_t index;
        if (!separator && left == 0) {
            while (path[left] != 0 && path[left] != '/' && path[left] != '\\') {
                ++left;
            }
            as_it_is = KQIsUtf8(path, left);
        }
        if (!separator) {
            --left;
            bytes[0] = *path;
            count = as_it_is ? 1 : KQPutUtf8((unsigned char)*path, bytes);
        }
        if (size - written <= count) {
            written = 0;
            break;
        }
        for (index = 0; index < count; ++index) {
            to[written++] = bytes[index];
        }
    }
    to[written] = 0;
    return *path == 0;
}

/* NOLINTEND(modernize-*,readability-identifier-naming) */

#endif
