// Keeps README.md and the compiled snippets in step: every ```cpp block of the README
// is one of the "// [readme]" regions of the example programs named by ZELVOR_SNIPPETS
// (the tour's examples/tour_readme.cpp, which runs them and checks their values, and the
// database example), and every region is shown.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

// The blocks of the file at `path` between `open` and `close` lines, with the
// indentation of the opening line removed.
std::vector<std::string> Blocks(const std::string& path, const std::string& open,
                                const std::string& close) {
    std::ifstream in(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    std::vector<std::string> blocks;
    for (size_t i = 0; i < lines.size(); ++i) {
        const size_t at = lines[i].find(open);
        if (at == std::string::npos || lines[i].substr(at) != open) {
            continue;
        }
        std::string block;
        for (++i; i < lines.size() && lines[i].find(close) == std::string::npos; ++i) {
            block += lines[i].size() > at ? lines[i].substr(at) : std::string();
            block += '\n';
        }
        blocks.push_back(block);
    }
    return blocks;
}

TEST(ReadmeText, CodeBlocksAreTheCompiledSnippets) {
    const auto readme = Blocks(ZELVOR_README, "```cpp", "```");
    std::vector<std::string> snippets;
    std::istringstream files(ZELVOR_SNIPPETS);
    for (std::string file; std::getline(files, file, ',');) {
        const auto found = Blocks(file, "// [readme]", "// [/readme]");
        EXPECT_FALSE(found.empty()) << "no snippets in " << file;
        snippets.insert(snippets.end(), found.begin(), found.end());
    }
    ASSERT_FALSE(readme.empty());
    for (const auto& block : readme) {
        EXPECT_NE(std::find(snippets.begin(), snippets.end(), block), snippets.end())
            << "README block not among the compiled snippets:\n"
            << block;
    }
    for (const auto& snippet : snippets) {
        EXPECT_NE(std::find(readme.begin(), readme.end(), snippet), readme.end())
            << "snippet not shown in the README:\n"
            << snippet;
    }
}

}  // namespace
