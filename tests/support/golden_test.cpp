// What is said of a picture or a list of texts that is another than the golden one.
#include "support/golden.h"

#include "doctest/doctest.h"

static DecodedImage ImageOf(const TestImage& image) { return {image.width, image.height, image.argb}; }

TEST_CASE(
    "of a picture that differs the rectangle around all differing pixels is named, and the first of them") {
    const TestImage expected{4, 3, std::vector<uint32_t>(12, 0xFF112233)};
    CHECK(PictureDifference(ImageOf(expected), expected).empty());

    TestImage drawn = expected;
    drawn.argb[1 * 4 + 2] = 0xFF0000AB;  // (2, 1)
    CHECK(PictureDifference(ImageOf(expected), drawn) ==
          "1 pixels differ, all from (2, 1) to before (3, 2); the first, (2, 1), is 0xFF0000AB and not "
          "0xFF112233");
    drawn.argb[2 * 4 + 0] = 0;  // (0, 2)
    CHECK(PictureDifference(ImageOf(expected), drawn) ==
          "2 pixels differ, all from (0, 1) to before (3, 3); the first, (2, 1), is 0xFF0000AB and not "
          "0xFF112233");
}

TEST_CASE("a picture of another size differs by its size") {
    const TestImage wide{2, 1, {1, 2}}, high{1, 2, {1, 2}};
    CHECK(PictureDifference(ImageOf(wide), high) == "expected 2 by 1 pixels, drawn 1 by 2");
}

TEST_CASE("of a list of texts that differs the first differing line is shown as drawn and as expected") {
    CHECK(LineDifference("a\nb\n", "a\nb\n").empty());
    CHECK(LineDifference("a\nb\nc\n", "a\nB\nC\n") == "line 2 is 'B' and not 'b'");
    CHECK(LineDifference("a\n", "a\nb\n") == "line 2 is 'b' and should be missing");
    CHECK(LineDifference("a\nb\n", "a\n") == "line 2 is missing and not 'b'");
    CHECK(LineDifference("a\n", "a") == "the last line ends otherwise");
}
