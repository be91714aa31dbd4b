// An entry to no extension at all, beside RuleBreaker.cpp.

extern "C" __attribute__((visibility("default"))) void const*
VexPlugin_getExtension(char const* /*id*/) {
#if defined(ENTRY_BREAKER_THROWS)
    throw 1;
#else
    return nullptr;
#endif
}
