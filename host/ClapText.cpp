#include "host/ClapText.h"

#include <algorithm>
#include <cstring>

void copyText(char* out, std::size_t capacity, std::string_view text)
{
    if (!out || capacity == 0)
        return;
    std::size_t length = std::min(capacity - 1, text.size());
    while (length < text.size() && length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
        --length;
    std::memcpy(out, text.data(), length);
    out[length] = '\0';
}
