#include "platform/system.h"

#include "platform/clock.h"

#include <cstdint>
#include <fstream>
#include <string>

namespace gl {

long sysid() {
    if (ClockIsVirtual())
        return 0;
    std::string name;
    std::ifstream("/etc/machine-id") >> name;
    // FNV-1a: spreads the identifier over the 31 bits that files keep.
    std::uint32_t hash = 2166136261U;
    for (const char c : name)
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    return static_cast<long>(hash & 0x7FFFFFFF);
}

} // namespace gl
