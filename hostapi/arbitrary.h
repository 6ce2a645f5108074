// hostapi/arbitrary.h — callbacks for parameters whose values only the effect understands.
#pragma once

#include <cstdint>

// [any thread, re-entrant] Results (arbPH and the like) are the host's once returned.
struct PF_ArbParamsExtra {
  std::int32_t which_function;
  std::int16_t id;
  std::int16_t padding;
  union {
    struct {
      void* refconPV;
      void*** arbPH;
    } new_func_params;
    struct {
      void* refconPV;
      void** arbH;
    } dispose_func_params;
    struct {
      void* refconPV;
      void** src_arbH;
      void*** dst_arbPH;
    } copy_func_params;
    struct {
      void* refconPV;
      void** arbH;
      std::uint32_t* flat_data_sizePLu;
    } flat_size_func_params;
    struct {
      void* refconPV;
      void** arbH;
      std::uint32_t buf_sizeLu;
      void* flat_dataPV;
    } flatten_func_params;
    struct {
      void* refconPV;
      std::uint32_t buf_sizeLu;
      const void* flat_dataPV;
      void*** arbPH;
    } unflatten_func_params;
    struct {
      void* refconPV;
      void** left_arbH;
      void** right_arbH;
      double tF;
      void*** interpPH;
    } interp_func_params;
    struct {
      void* refconPV;
      void** a_arbH;
      void** b_arbH;
      std::int32_t* compareP;
    } compare_func_params;
    struct {
      void* refconPV;
      void** arbH;
      std::uint32_t* print_sizePLu;
    } print_size_func_params;
    struct {
      void* refconPV;
      std::int32_t print_flags;
      void** arbH;
      std::uint32_t print_sizeLu;
      char* print_bufferPC;
    } print_func_params;
    struct {
      void* refconPV;
      const char* bufPC;
      std::uint32_t bytes_to_scanLu;
      void*** arbPH;
    } scan_func_params;
  } u;
};

inline constexpr std::int32_t PF_Arbitrary_NEW_FUNC = 0;
inline constexpr std::int32_t PF_Arbitrary_DISPOSE_FUNC = 1;
inline constexpr std::int32_t PF_Arbitrary_COPY_FUNC = 2;
inline constexpr std::int32_t PF_Arbitrary_FLAT_SIZE_FUNC = 3;
inline constexpr std::int32_t PF_Arbitrary_FLATTEN_FUNC = 4;
inline constexpr std::int32_t PF_Arbitrary_UNFLATTEN_FUNC = 5;
inline constexpr std::int32_t PF_Arbitrary_INTERP_FUNC = 6;
inline constexpr std::int32_t PF_Arbitrary_COMPARE_FUNC = 7;
inline constexpr std::int32_t PF_Arbitrary_PRINT_SIZE_FUNC = 8;
inline constexpr std::int32_t PF_Arbitrary_PRINT_FUNC = 9;
inline constexpr std::int32_t PF_Arbitrary_SCAN_FUNC = 10;

inline constexpr std::int32_t PF_ArbCompare_EQUAL = 0;
inline constexpr std::int32_t PF_ArbCompare_LESS = 1;
inline constexpr std::int32_t PF_ArbCompare_MORE = 2;
inline constexpr std::int32_t PF_ArbCompare_NOT_EQUAL = 3;

inline constexpr std::int32_t PF_ArbPrint_NONE = 0;
inline constexpr std::int32_t PF_ArbPrint_ABBREVIATED = 0x00000001;
