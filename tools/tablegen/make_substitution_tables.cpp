// Writes the built-in substitution tables into a C++ source file that the program is built with,
// so that a start reads its tables as data instead of making them (see core/seeded_table.h).
//
//   make_substitution_tables <output.cpp>

#include "core/seeded_table.h"

#include <cstdio>
#include <string>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <output.cpp>\n", argv[0]);
        return 2;
    }
    // Written beside the target and renamed over it, so that a failed run leaves no half file.
    const std::string target = argv[1];
    const std::string temp = target + ".part";
    std::FILE* out = std::fopen(temp.c_str(), "w");
    if (!out) {
        std::perror(temp.c_str());
        return 1;
    }
    std::fprintf(out,
                 "// Written by make_substitution_tables from core/seeded_table.h.\n"
                 "#include <cstdint>\n\nnamespace vt {\n\n"
                 "extern const int16_t kBuiltInTableCodes[4][%d];\n"
                 "const int16_t kBuiltInTableCodes[4][%d] = {\n",
                 vt::kSeededTableKeys, vt::kSeededTableKeys);
    for (const vt::BuiltInTableSeed& table : vt::kBuiltInTableSeeds) {
        const std::vector<int16_t> codes = vt::SeededTableCodes(table.seed);
        std::fprintf(out, "    {");
        for (size_t i = 0; i < codes.size(); ++i)
            std::fprintf(out, "%s%d,", i % 16 == 0 ? "\n        " : " ", int{codes[i]});
        std::fprintf(out, "\n    },\n");
    }
    std::fprintf(out, "};\n\n} // namespace vt\n");
    if (std::fclose(out) != 0 || std::rename(temp.c_str(), target.c_str()) != 0) {
        std::perror(target.c_str());
        std::remove(temp.c_str());
        return 1;
    }
    return 0;
}
