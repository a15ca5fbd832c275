// SPDX-License-Identifier: Apache-2.0
// Marks the declarations that make up the library's interface.
#ifndef VEK_API_H
#define VEK_API_H

#if defined(__GNUC__)
#define VEK_API __attribute__((visibility("default")))
#else
#define VEK_API
#endif

#endif
