// tests/validate/odd_variant.h — what the odd effect is to be.
#pragma once

#include <cstdlib>

// Sets the environment's variable while it lives.
class OddVariant {
 public:
  explicit OddVariant(const char* variant) { set(variant); }
  ~OddVariant() { set(""); }
  OddVariant(const OddVariant&) = delete;
  OddVariant& operator=(const OddVariant&) = delete;

 private:
  static void set(const char* value) {
#ifdef _WIN32
    _putenv_s("VARILUM_ODD_EFFECT", value);
#else
    setenv("VARILUM_ODD_EFFECT", value, 1);
#endif
  }
};
