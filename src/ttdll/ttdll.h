// SPDX-License-Identifier: MIT
// The transfer library of the program: the link to the instrument over USB, as six functions of C. All numbers have 32
// bits. Any library with these six functions can replace ours. The last two functions are additions of our own: a
// caller must not rely on them.
#pragma once

#include <stdint.h> // NOLINT(modernize-deprecated-headers): callers may be C

#if defined(_WIN32)
#define TTDLL_API __declspec(dllexport)
#else
#define TTDLL_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

// Opens the link to the instrument. Mode 0 is for normal use. Mode 1 is for use after a transfer that was cut off; it
// also drops what the instrument still sends. Returns 0 on failure.
TTDLL_API int32_t InitializeTt(int32_t mode);
// Closes the link. Mode 0 is for the end of a good transfer and for a cancel, 1 for a failure and for a recovery.
// Returns 0 when no link was open.
TTDLL_API int32_t closeTt(int32_t mode);
// Sends count bytes and returns how many were sent. The number is also stored at done, which may be null. Gives up
// after the time of the settings.
TTDLL_API int32_t WriteThread(const void* bytes, int32_t count, int32_t* done);
// Reads exactly count bytes, which may be 0, and returns how many have come. The number is stored as above. Gives up
// after the time of the settings.
TTDLL_API int32_t ReadThread(void* buffer, int32_t count, int32_t* done);
// The same as the two above under other names, for a test bench.
TTDLL_API int32_t senddatatoTt(const void* bytes, int32_t count, int32_t* done);
TTDLL_API int32_t getTtData(void* buffer, int32_t count, int32_t* done);

// Returns 1 when the instrument has sent more than was read, otherwise 0. Waits a twentieth of a second for more.
TTDLL_API int32_t hasMoreTt(void);
// Describes the links that the settings name and what is found there, as UTF-8 text in lines of fields that are
// separated by tabs. Returns the length of the text in bytes. At most size bytes of it are stored in buffer, without a
// zero byte at the end. The lines:
//   settings  path of the settings file  link (auto, usb, socket)
//   socket    path  state
//   wanted    vendor:product  interface  endpoint out  endpoint in
//   device    bus:address  vendor:product  path  maker  product  serial number  state
// state is "open" when the link opens, otherwise the reason why it does not: "absent", "silent", "rights", "busy",
// "endpoints" (the device lacks one), "other" (not the device that is wanted), or "failed: " and the system's reason.
TTDLL_API int32_t describeTt(char* buffer, int32_t size);

#ifdef __cplusplus
}
#endif
