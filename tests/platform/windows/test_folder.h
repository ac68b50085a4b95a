// An empty folder of a test's own, removed with all that it holds.
#pragma once

#include <filesystem>
#include <string>
#include <system_error>

class TestFolder {
public:
    TestFolder() {
        static int count = 0;
        root = std::filesystem::temp_directory_path() / (L"zel_platform_test_" + std::to_wstring(++count));
        RemoveAll();
        std::filesystem::create_directories(root);
    }
    ~TestFolder() { RemoveAll(); }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    std::wstring Path() const { return root.wstring(); }
    std::wstring operator/(const std::wstring& name) const { return (root / name).wstring(); }

private:
    void RemoveAll() {
        std::error_code ignored;
        std::filesystem::remove_all(L"\\\\?\\" + root.wstring(), ignored);
        std::filesystem::remove_all(root, ignored);
    }

    std::filesystem::path root;
};
