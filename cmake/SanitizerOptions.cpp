// What the sanitizers ask every program built with them when it starts: how to report, and
// which reports are about libraries that are not ours to mend. Environment variables such as
// ASAN_OPTIONS still have the last word on the options.

extern "C" {

const char* __asan_default_options() {
  return "detect_stack_use_after_return=1:strict_string_checks=1";
}

const char* __asan_default_suppressions() {
  return
      // Copies names of a given length out of the server's answer, where no zero ends them.
      "interceptor_via_lib:libxkbcommon-x11.so\n";
}

const char* __ubsan_default_options() {
  return "print_stacktrace=1";
}

const char* __lsan_default_options() {
  return "print_suppressions=0";
}

const char* __lsan_default_suppressions() {
  return
      // Keeps its configuration and the patterns of fonts until the process ends.
      "leak:libfontconfig.so\n";
}

const char* __tsan_default_options() {
  return "second_deadlock_stack=1";
}
}
