/// The toolkit looks for a font that has a character which its own lacks, and what fontconfig gives it for that is
/// never freed. Leak sanitizer calls this by its name.
extern "C" const char* __lsan_default_suppressions(); // NOLINT(bugprone-reserved-identifier)

extern "C" const char* __lsan_default_suppressions() // NOLINT(bugprone-reserved-identifier)
{
    return "leak:libfontconfig\n";
}

extern "C" const char* __lsan_default_options(); // NOLINT(bugprone-reserved-identifier)

extern "C" const char* __lsan_default_options() // NOLINT(bugprone-reserved-identifier)
{
    return "print_suppressions=0";
}
