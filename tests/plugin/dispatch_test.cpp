// tests/plugin/dispatch_test.cpp — from commands to handlers, from failures to results.
#include "plugin/dispatch.h"

#include <gtest/gtest.h>

#include "tests/plugin/handle_table.h"

namespace varilum {
namespace {

class Dispatch : public ::testing::Test {
 protected:
  Dispatch() { in_.utils = table_.utils(); }
  ~Dispatch() override {
    EXPECT_EQ(table_.locks(), 0);
    EXPECT_EQ(table_.violations(), 0);
  }
  std::int32_t send(std::int32_t selector) {
    out_.out_flags = -1;
    return dispatch(selector, {in_, out_, nullptr, nullptr, nullptr});
  }

  HandleTable table_;
  PF_InData in_{};
  PF_OutData out_{};
};

TEST_F(Dispatch, AnswersUnusedCommandsWithNothing) {
  for (const std::int32_t selector :
       {2, 9, 10, 12, 16, 17, 19, 20, 21, 25, 26, 27, 29, 33, 34, 1000, -1}) {
    EXPECT_EQ(send(selector), 0) << selector;
    EXPECT_EQ(out_.out_flags, 0) << selector;
  }
}

TEST_F(Dispatch, AnswersWithoutAnInstance) {
  for (const std::int32_t selector :
       {PF_Cmd_SEQUENCE_RESETUP, PF_Cmd_SEQUENCE_FLATTEN, PF_Cmd_SEQUENCE_SETDOWN,
        PF_Cmd_USER_CHANGED_PARAM, PF_Cmd_UPDATE_PARAMS_UI, PF_Cmd_EVENT,
        PF_Cmd_QUERY_DYNAMIC_FLAGS, PF_Cmd_ARBITRARY_CALLBACK, PF_Cmd_GET_FLATTENED_SEQUENCE_DATA,
        PF_Cmd_GLOBAL_SETDOWN}) {
    EXPECT_EQ(send(selector), 0) << selector;
  }
}

TEST_F(Dispatch, RenderWithoutAnInstanceTellsTheUser) {
  EXPECT_EQ(send(PF_Cmd_RENDER), 512);
  EXPECT_EQ(out_.out_flags, 0x20000 | 0x100);
  EXPECT_STREQ(out_.return_msg, "Varilum effect invoked without sequence data");
}

TEST_F(Dispatch, TurnsAMissingSuiteIntoAResult) {
  EXPECT_EQ(send(PF_Cmd_GLOBAL_SETUP), 516);
  EXPECT_EQ(out_.global_data, nullptr);
}

TEST_F(Dispatch, AboutNeedsNoGlobalData) {
  in_.version = {13, 14};
  EXPECT_EQ(send(PF_Cmd_ABOUT), 0);
  EXPECT_STREQ(out_.return_msg,
               "Varilum4 v4.2.0 Copyright (c) Tovan. All rights reserved.\r v13.14   ");
}

TEST_F(Dispatch, AboutNamesTheHost) {
  out_.global_data = table_.create(sizeof(GlobalState));
  GlobalState global{};
  global.isAfterEffects = 1;
  std::strcpy(global.hostVersionText, "15.1.2x69");
  std::memcpy(table_.bytes(out_.global_data).data(), &global, sizeof global);
  in_.version = {13, 14};
  EXPECT_EQ(send(PF_Cmd_ABOUT), 0);
  EXPECT_STREQ(out_.return_msg,
               "Varilum4 v4.2.0 Copyright (c) Tovan. All rights reserved.\r"
               "AE v13.14   15.1.2x69");
}

}  // namespace
}  // namespace varilum
