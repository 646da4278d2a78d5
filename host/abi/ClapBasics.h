#pragma once

#include <cstdint>

// Functions across the boundary use the platform's C convention, which on Linux needs no keyword.
#if !defined(CLAP_ABI)
#define CLAP_ABI
#endif

// The module is built with hidden symbols; only the entry record carries this.
#if !defined(CLAP_EXPORT)
#define CLAP_EXPORT __attribute__((visibility("default")))
#endif

#define CLAP_VERSION_MAJOR 1
#define CLAP_VERSION_MINOR 2
#define CLAP_VERSION_REVISION 5

// Brace initialiser of a clap_version.
#define CLAP_VERSION_INIT                                                                                    \
    {                                                                                                        \
        CLAP_VERSION_MAJOR, CLAP_VERSION_MINOR, CLAP_VERSION_REVISION                                        \
    }

// Comparisons of the declared version with another one; usable in #if.
#define CLAP_VERSION_LT(major, minor, revision)                                                              \
    (CLAP_VERSION_MAJOR < (major) ||                                                                         \
     (CLAP_VERSION_MAJOR == (major) &&                                                                       \
      (CLAP_VERSION_MINOR < (minor) ||                                                                       \
       (CLAP_VERSION_MINOR == (minor) && CLAP_VERSION_REVISION < (revision)))))
#define CLAP_VERSION_EQ(major, minor, revision)                                                              \
    (CLAP_VERSION_MAJOR == (major) && CLAP_VERSION_MINOR == (minor) && CLAP_VERSION_REVISION == (revision))
#define CLAP_VERSION_GE(major, minor, revision) (!CLAP_VERSION_LT(major, minor, revision))

/// Version of the interface that one side was built with.
struct clap_version {
    uint32_t major;
    uint32_t minor;
    uint32_t revision;
};
using clap_version_t = clap_version;

constexpr clap_version_t CLAP_VERSION = CLAP_VERSION_INIT;

/// True for every stable version; those with major number 0 had no fixed layout.
[[nodiscard]] constexpr bool clap_version_is_compatible(const clap_version_t version)
{
    return version.major != 0;
}

using clap_id = uint32_t;
constexpr clap_id CLAP_INVALID_ID = 0xffffffff;

/// Bytes of the text fields inside records, the terminating zero included.
enum {
    CLAP_NAME_SIZE = 256,
    CLAP_PATH_SIZE = 1024,
};

// Times are fixed point with 31 fractional bits, in beats and in seconds.
using clap_beattime = int64_t;
using clap_sectime = int64_t;
constexpr int64_t CLAP_BEATTIME_FACTOR = int64_t{1} << 31;
constexpr int64_t CLAP_SECTIME_FACTOR = int64_t{1} << 31;

using clap_timestamp = uint64_t;  // seconds since 1970, UTC
constexpr clap_timestamp CLAP_TIMESTAMP_UNKNOWN = 0;

/// 8 bits per component, 0 is transparent black.
struct clap_color {
    uint8_t alpha;
    uint8_t red;
    uint8_t green;
    uint8_t blue;
};
using clap_color_t = clap_color;
constexpr clap_color_t CLAP_COLOR_TRANSPARENT = {0, 0, 0, 0};

/// A plug-in of any format; for this one, abi is "clap" and id the descriptor's id.
struct clap_universal_plugin_id {
    const char* abi;
    const char* id;
};
using clap_universal_plugin_id_t = clap_universal_plugin_id;
