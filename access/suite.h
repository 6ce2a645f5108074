// access/suite.h — a table of host functions, held for as long as this object lives.
#pragma once

#include <cstdint>
#include <utility>

#include "hostapi/command_data.h"
#include "hostapi/commands.h"
#include "hostapi/suites/basic.h"

namespace varilum {

// A suite that the host may lack: false when it does.
template <class Table>
class OptionalSuite {
 public:
  OptionalSuite(const PF_InData& in, const char* name, std::int32_t version) noexcept
      : basic_(in.pica_basicP), name_(name), version_(version) {
    const void* table = nullptr;
    if (basic_ != nullptr && basic_->AcquireSuite(name, version, &table) == kSPNoError) {
      table_ = static_cast<const Table*>(table);
    }
  }
  OptionalSuite(OptionalSuite&& other) noexcept
      : basic_(other.basic_),
        name_(other.name_),
        version_(other.version_),
        table_(std::exchange(other.table_, nullptr)) {}
  OptionalSuite& operator=(OptionalSuite&&) = delete;
  ~OptionalSuite() {
    if (table_ != nullptr) basic_->ReleaseSuite(name_, version_);
  }

  explicit operator bool() const noexcept { return table_ != nullptr; }
  const Table* operator->() const noexcept { return table_; }

 private:
  SPBasicSuite* basic_;
  const char* name_;
  std::int32_t version_;
  const Table* table_ = nullptr;
};

// A suite that the caller cannot do without: its absence is thrown as PF_Err_BAD_CALLBACK_PARAM.
template <class Table>
class Suite : public OptionalSuite<Table> {
 public:
  Suite(const PF_InData& in, const char* name, std::int32_t version)
      : OptionalSuite<Table>(in, name, version) {
    if (!*this) throw PF_Err_BAD_CALLBACK_PARAM;
  }
};

}  // namespace varilum
