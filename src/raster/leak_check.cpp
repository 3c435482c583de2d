// Settings of the leak check, linked into the programs that use Qt when they are built with the
// sanitizers; they count only from the program itself, not from a library or a module.

// What libraries below Qt make once and keep to the end of the process isn't a leak of ours:
// fontconfig's list of the system's fonts, the connection to the session's bus.
extern "C" const char* __lsan_default_suppressions() {  // NOLINT(bugprone-reserved-identifier)
    return "leak:libfontconfig\nleak:libdbus";
}

// Standard error carries the program's complaints and nothing else.
extern "C" const char* __lsan_default_options() {  // NOLINT(bugprone-reserved-identifier)
    return "print_suppressions=0";
}
