// An empty folder of a test's own, removed with all that it holds.
#pragma once

#include <filesystem>
#include <string>
#include <system_error>

class TestFolder {
public:
    TestFolder() {
        const std::filesystem::path parent = std::filesystem::temp_directory_path();
        static int number = 0;  // a test may have two
        do {
            root = parent / (L"zel_platform_test_" + std::to_wstring(++number));
            Remove();  // left behind by a run that did not end
        } while (!std::filesystem::create_directory(root));
    }
    ~TestFolder() { Remove(); }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    std::wstring Path() const { return root.wstring(); }
    std::wstring operator/(const std::wstring& name) const { return (root / name).wstring(); }

private:
    void Remove() const {
        std::error_code ignored;
        std::filesystem::remove_all(root, ignored);
    }

    std::filesystem::path root;
};
