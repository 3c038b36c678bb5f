// Read by the sanitizers' runtime before anything else runs. The leak checker of GCC 12 takes a block of thread-local
// memory whose address ends in 010 for one that an older C library has allocated, reads a size before it and crashes;
// without this interception it looks for none.
//
// A program that wants more options than these has a function of its own.
extern "C" const char* __asan_default_options();

extern "C" __attribute__((weak)) const char* __asan_default_options() {
    return "intercept_tls_get_addr=0";
}
