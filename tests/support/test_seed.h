#pragma once

#include <cstdlib>
#include <random>

/// A number of the environment that makes a test longer or repeats it, or another one.
inline unsigned FromEnvironment(const char* name, unsigned otherwise) {
    const char* value = std::getenv(name);
    return value ? static_cast<unsigned>(std::strtoul(value, nullptr, 10)) : otherwise;
}

/// Another seed each time, unless KIRVO_TEST_SEED asks for one; the test tells which.
inline unsigned TestSeed() {
    return FromEnvironment("KIRVO_TEST_SEED", std::random_device()());
}
