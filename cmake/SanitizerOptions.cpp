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

const char* __tsan_default_suppressions() {
  return
      // Built without the sanitizer: it does not see how they synchronise.
      "called_from_lib:libQt6Core.so.6\n"
      "called_from_lib:libQt6DBus.so.6\n"
      "called_from_lib:libQt6Gui.so.6\n"
      "called_from_lib:libQt6Widgets.so.6\n"
      "called_from_lib:libQt6XcbQpa.so.6\n"
      "called_from_lib:libdbus-1.so.3\n"
      "called_from_lib:libglib-2.0.so.0\n"
      // Takes an event in a thread of Qt's, which hands it over without the sanitizer's
      // knowledge.
      "race:libxcb.so.1\n"
      // An event of the main queue's own, which Qt hands over: where it is made, and where
      // it arrives.
      "race:postWakeUp\n"
      "race:vembrix::noteLoopEvent\n"
      // What Qt's thread for D-Bus does with objects of the main thread, under Qt's locks.
      "race:QObject::disconnect\n"
      "deadlock:libdbus-1.so.3\n";
}
}
