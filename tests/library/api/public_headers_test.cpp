// SPDX-License-Identifier: MIT
// The public headers as hosts have them: each alone in a folder, for every compiler and language
// that a host may be written with. Nothing is run; the compilers say what they think of them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <set>
#include <string>

#include "tests/support/file_text.h"
#include "tests/support/pattern.h"
#include "tests/support/temp_folder.h"

namespace {

struct Compiler {
  const char* name;
  const char* command;
  const char* language;  // as the compilers' option -x has it
};

// clang stands for Microsoft's compiler, whose own headers are not to be had: the two that a
// compiler brings along itself must do.
#define MICROSOFT "clang --target=x86_64-pc-windows-msvc -ffreestanding -nostdlibinc"
constexpr Compiler kGccC = {"GccC", "gcc -Wstrict-prototypes", "c"};
constexpr Compiler kGccCpp = {"GccCpp", "g++", "c++"};
constexpr Compiler kMingwC = {"MingwC", "x86_64-w64-mingw32-gcc-posix -Wstrict-prototypes", "c"};
constexpr Compiler kMingwCpp = {"MingwCpp", "x86_64-w64-mingw32-g++-posix", "c++"};
constexpr Compiler kMicrosoftC = {"MicrosoftC", MICROSOFT " -Wstrict-prototypes", "c"};
constexpr Compiler kMicrosoftCpp = {"MicrosoftCpp", MICROSOFT, "c++"};

class PublicHeaders
    : public testing::TestWithParam<std::tuple<Compiler, const char*, const char*>> {
 protected:
  std::string HeaderText(const std::string& header) {
    return ReadWholeFile(VELQUIN_SOURCE_FOLDER "/include/" + header).value();
  }

  /// @return what the compiler of this test says of a source in a folder of its own.
  std::string Complaints(const std::string& source) {
    const auto& [compiler, standard, header] = GetParam();
    WriteWholeFile(folder / "host", source);
    const std::string command = "cd '" + folder.Narrow() + "' && " + compiler.command + " -x" +
                                compiler.language + " -std=" + standard +
                                " -Wall -Wextra -Wpedantic -Wundef -Wshadow -Werror -fsyntax-only"
                                " host 2>&1 || echo failed";
    FILE* output = popen(command.c_str(), "r");
    if (output == nullptr) return "the compiler cannot be run";
    std::string complaints;
    for (int c = std::fgetc(output); c != EOF; c = std::fgetc(output)) {
      complaints += static_cast<char>(c);
    }
    pclose(output);
    return complaints;
  }

  TempFolder folder;
};

/// @return the names of the functions for which a header has a type NAMEFn.
std::set<std::string> FunctionsWithTypes(const std::string& header) {
  std::set<std::string> names;
  for (const auto& type : PatternPlaces(header, R"(typedef\s+\w+\s+\(\*(\w+)Fn\)\()")) {
    names.insert(type[1]);
  }
  return names;
}

TEST_P(PublicHeaders, StandAloneAndGiveEveryFunctionAType) {
  const std::string header = std::get<2>(GetParam());
  const std::string text = HeaderText(header);
  WriteWholeFile(folder / header, text);
  const std::set<std::string> functions = FunctionsWithTypes(text);
  ASSERT_EQ(functions.size(), header == "telescope_api.h" ? 27u : 6u);

  std::string source =
      "#include \"" + header + "\"\n#include \"" + header + "\"\nint main(void) {\n";
  for (const std::string& name : functions) {
    source += "  { " + name + "Fn function = " + name + "; (void)function; }\n";
  }
  EXPECT_EQ(Complaints(source + "  return 0;\n}\n"), "");
}

TEST_P(PublicHeaders, GoTogetherInEitherOrder) {
  const std::string header = std::get<2>(GetParam());
  const std::string other = header == "telescope_api.h" ? "velquin_util.h" : "telescope_api.h";
  for (const std::string& name : {header, other}) WriteWholeFile(folder / name, HeaderText(name));
  EXPECT_EQ(Complaints("#include \"" + header + "\"\n#include \"" + other +
                       "\"\nint main(void) { return 0; }\n"),
            "");
}

// What finds nothing wrong in anything would not be worth a test.
TEST_P(PublicHeaders, AreLookedAtByTheCompiler) {
  const std::string header = std::get<2>(GetParam());
  WriteWholeFile(folder / header, HeaderText(header) + "int32_t Wrong(NoSuchType);\n");
  EXPECT_THAT(Complaints("#include \"" + header + "\"\n"), testing::HasSubstr("NoSuchType"));
}

std::string NameOf(const testing::TestParamInfo<PublicHeaders::ParamType>& info) {
  const auto& [compiler, standard, header] = info.param;
  std::string text = std::string(compiler.name) + "_" + standard + "_" + header;
  text.resize(text.size() - std::string(".h").size());
  std::replace(text.begin(), text.end(), '+', 'p');
  return text;
}

const auto kHeaders = testing::Values("telescope_api.h", "velquin_util.h");

INSTANTIATE_TEST_SUITE_P(InC, PublicHeaders,
                         testing::Combine(testing::Values(kGccC, kMingwC, kMicrosoftC),
                                          testing::Values("c11"), kHeaders),
                         NameOf);
INSTANTIATE_TEST_SUITE_P(InCpp, PublicHeaders,
                         testing::Combine(testing::Values(kGccCpp, kMingwCpp, kMicrosoftCpp),
                                          testing::Values("c++11", "c++14", "c++17", "c++20"),
                                          kHeaders),
                         NameOf);

}  // namespace
