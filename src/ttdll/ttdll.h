// SPDX-License-Identifier: MIT
// The transfer library of the program: the link to the instrument over USB, in six functions of C. All numbers are 32
// bits. Any library with these six may stand in for ours; the two below them are of our own, and whoever calls them
// does without where they are missing.
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

// Opens the link to the instrument: mode 0 in normal use, 1 after a transfer that was cut off, which also throws away
// what the instrument still sends. 0 on failure.
TTDLL_API int32_t InitializeTt(int32_t mode);
// Closes the link: mode 0 after a good transfer and on a cancel, 1 after a failure and in recovery. 0 when no link was
// open.
TTDLL_API int32_t closeTt(int32_t mode);
// Sends count bytes and gives the count that went out, which is also stored behind done (which may be null). Gives up
// after the configured time.
TTDLL_API int32_t WriteThread(const void* bytes, int32_t count, int32_t* done);
// Reads exactly count bytes, which may be 0, and gives the count that came in, stored as above. Gives up after the
// configured time.
TTDLL_API int32_t ReadThread(void* buffer, int32_t count, int32_t* done);
// The same services under other names, for bench purposes.
TTDLL_API int32_t senddatatoTt(const void* bytes, int32_t count, int32_t* done);
TTDLL_API int32_t getTtData(void* buffer, int32_t count, int32_t* done);

// 1 when the instrument has sent more than was read, which is waited for a twentieth of a second; otherwise 0.
TTDLL_API int32_t hasMoreTt(void);
// Tells which ways to an instrument the settings name and what is found there, as text of UTF-8 in lines of fields
// parted by tabs, and gives its length in bytes. At most size bytes of it go into buffer, without a zero byte. The
// lines:
//   settings  path of the settings file  link (auto, usb, socket)
//   socket    path  state
//   wanted    vendor:product  interface  endpoint out  endpoint in
//   device    bus:address  vendor:product  path  maker  product  serial number  state
// state is "open" where the link opens, and otherwise what is in the way: "absent", "silent", "rights", "busy",
// "endpoints", "other" (not the device that is wanted), or "failed: " and the system's reason.
TTDLL_API int32_t describeTt(char* buffer, int32_t size);

#ifdef __cplusplus
}
#endif
