// cli/sanitizer_suppressions.cpp — libraries that the sanitizers cannot see into.
//
// Built into the program and its tests in the sanitizer builds alone. The codecs hand work between
// threads of their own in ways that the thread sanitizer cannot follow without instrumenting them;
// font libraries do too, and keep their caches until the end of the process.

extern "C" {

__attribute__((visibility("default"))) const char* __tsan_default_suppressions() {
  return "race:libavcodec.so\n"
         "race:libavformat.so\n"
         "race:libavutil.so\n"
         "race:libswscale.so\n"
         "race:libx264.so\n"
         "race:libx265.so\n"
         "race:libfontconfig.so\n"
         "race:libpango\n"
         "race:libglib-2.0.so\n"
         "race:libcairo.so\n";
}

__attribute__((visibility("default"))) const char* __lsan_default_suppressions() {
  return "leak:x265_malloc\n"
         "leak:libfontconfig.so\n"
         "leak:libpango\n"
         "leak:libcairo.so\n"
         "leak:libglib-2.0.so\n";
}

}  // extern "C"
