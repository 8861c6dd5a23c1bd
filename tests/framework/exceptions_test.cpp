// SPDX-License-Identifier: MIT
#include "framework/base/exceptions.h"

#include <gtest/gtest.h>

namespace {

template <class Exception, class Function>
HRESULT CodeOf(Function function) {
  try {
    function();
  } catch (const Exception& exception) {
    return exception.m_hr;
  }
  ADD_FAILURE() << "nothing was thrown";
  return 0;
}

}  // namespace

TEST(Exceptions, CarryTheCodeTheyAreThrownWith) {
  EXPECT_EQ(CodeOf<CAtlException>([] { AtlThrow(static_cast<HRESULT>(0x80004005u)); }),
            static_cast<HRESULT>(0x80004005u));
}

TEST(Exceptions, SayInvalidArgument) {
  EXPECT_EQ(CodeOf<CInvalidArgException>([] { AfxThrowInvalidArgException(); }),
            static_cast<HRESULT>(0x80070057u));
  // A handler of the base class sees it too.
  EXPECT_EQ(CodeOf<CAtlException>([] { AfxThrowInvalidArgException(); }), kInvalidArgument);
}

TEST(Exceptions, TurnASystemErrorIntoAResult) {
  EXPECT_EQ(CodeOf<CResourceException>([] { AfxThrowResourceException(8); }),
            static_cast<HRESULT>(0x80070008u));
  EXPECT_EQ(CodeOf<CResourceException>([] { AfxThrowResourceException(0xFFFF); }),
            static_cast<HRESULT>(0x8007FFFFu));
  EXPECT_EQ(CodeOf<CResourceException>([] { AfxThrowResourceException(0); }), 0);
}
