// SPDX-License-Identifier: MIT
// Names for clang's thread-safety analysis, which scripts/lint runs: they declare which lock guards
// which data. Empty for other compilers.
#pragma once

#if defined(__clang__)
#define VELQUIN_ANNOTATE(x) __attribute__((x))
#else
#define VELQUIN_ANNOTATE(x)
#endif

#define CAPABILITY(name) VELQUIN_ANNOTATE(capability(name))
#define GUARDED_BY(lock) VELQUIN_ANNOTATE(guarded_by(lock))
#define REQUIRES(...) VELQUIN_ANNOTATE(requires_capability(__VA_ARGS__))
#define EXCLUDES(...) VELQUIN_ANNOTATE(locks_excluded(__VA_ARGS__))
#define ACQUIRE(...) VELQUIN_ANNOTATE(acquire_capability(__VA_ARGS__))
#define RELEASE(...) VELQUIN_ANNOTATE(release_capability(__VA_ARGS__))
#define SCOPED_CAPABILITY VELQUIN_ANNOTATE(scoped_lockable)
