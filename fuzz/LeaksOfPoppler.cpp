// What Poppler and fontconfig do not give back is theirs, and goes with the reader when it ends. Both linked
// by a target and asked by the leak sanitizer, where there is one.

// NOLINTBEGIN(bugprone-reserved-identifier): the sanitizer's name for it.
extern "C" const char *__lsan_default_suppressions();

extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libpoppler\nleak:libfontconfig\n";
}
// NOLINTEND(bugprone-reserved-identifier)
