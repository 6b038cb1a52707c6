// What Poppler and fontconfig do not give back is theirs, and goes with the reader when it ends. Both linked
// by a target and asked by the leak sanitizer, where there is one.

extern "C" const char *__lsan_default_suppressions();

extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libpoppler\nleak:libfontconfig\n";
}
