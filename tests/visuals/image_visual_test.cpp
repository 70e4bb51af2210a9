#include "visuals/image_visual.h"

#include <strsafe.h>

#include <string>
#include <utility>
#include <vector>

#include "on_canvas.h"
#include "support/png_file.h"

namespace {

using phone::DrawKind;
using phone::Operation;

constexpr LPCWSTR kOpaque = TEXT("\\opaque.png");
constexpr LPCWSTR kClear = TEXT("\\clear.png");

/// Runs a body on a phone that has a picture of 2x3 without alpha and one of 1x2 with it.
void WithPictures(const std::function<void(HDC dc, const std::filesystem::path& folder)>& body) {
  OnCanvas([&](HDC dc, const std::filesystem::path& folder) {
    ASSERT_TRUE(
        WritePng(folder / "opaque.png", 2, 3, false, {255, 0, 0, 0, 255, 0, 0, 0, 255, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
    ASSERT_TRUE(WritePng(folder / "clear.png", 1, 2, true, {255, 100, 0, 51, 9, 9, 9, 0}));
    body(dc, folder);
  });
}

TEST(ImageVisual, HoldsPremultipliedRowsBottomUp) {
  WithPictures([](HDC, const auto&) {
    const std::pair<LPCWSTR, std::vector<BYTE>> pictures[] = {
        {kOpaque, {6, 5, 4, 255, 9, 8, 7, 255, 255, 0, 0, 255, 3, 2, 1, 255, 0, 0, 255, 255, 0, 255, 0, 255}},
        {kClear, {0, 0, 0, 0, 0, 20, 51, 51}},
    };
    CImageVisual image;
    for (const auto& [path, bytes] : pictures) {
      ASSERT_EQ(image.Load(path), S_OK);
      EXPECT_EQ(image.hasAlpha, path == kClear ? 1 : 0);
      BITMAP info = {};
      GetObjectW(image.bitmap.get(), sizeof(info), &info);
      const BYTE* const pixels = static_cast<const BYTE*>(info.bmBits);
      EXPECT_EQ(std::vector<BYTE>(pixels, pixels + info.bmWidthBytes * info.bmHeight), bytes);
    }
  });
}

TEST(ImageVisual, TakesTheCheapestCallThatDrawsIt) {
  struct {
    LPCWSTR path;
    INT height, width, alpha;
    DrawKind kind;
    int format;
  } const cases[] = {
      {kOpaque, 3, 2, 255, DrawKind::BitBlt, 0},     {kOpaque, 3, 4, 255, DrawKind::StretchBlt, 0},
      {kOpaque, 6, 2, 255, DrawKind::StretchBlt, 0}, {kOpaque, 3, 2, 128, DrawKind::AlphaBlend, 0},
      {kClear, 2, 1, 255, DrawKind::AlphaBlend, 1},
  };
  WithPictures([&](HDC dc, const auto&) {
    CImageVisual image;
    EXPECT_EQ(image.Draw(dc, VALUE_ABSOLUTE), E_OUTOFMEMORY) << "there is no picture yet";
    image.SetPosition(3, 4);
    for (const auto& drawing : cases) {
      image.SetSize(drawing.height, drawing.width);
      ASSERT_EQ(image.Load(drawing.path), S_OK);
      phone::BeginTrace();
      for (const INT alpha : {0, drawing.alpha}) {
        image.SetAlpha(alpha);
        EXPECT_EQ(image.Draw(dc, VALUE_ABSOLUTE), S_OK);
      }
      ASSERT_EQ(phone::TraceRecords().size(), 1u);
      const phone::DrawRecord& record = phone::TraceRecords()[0];
      EXPECT_EQ(record.kind, drawing.kind);
      EXPECT_EQ(record.rect.right, 3 + drawing.width);
      EXPECT_EQ(record.rect.bottom, 4 + drawing.height);
      EXPECT_EQ(record.alpha_format, drawing.format);
    }
  });
}

TEST(ImageVisual, OnlyARefusedPathKeepsTheOldPicture) {
  WithPictures([](HDC, const std::filesystem::path& folder) {
    CImageVisual image;
    ASSERT_EQ(image.Load(kOpaque), S_OK);
    EXPECT_EQ(image.Load(nullptr), E_OUTOFMEMORY);
    EXPECT_EQ(image.Load(std::u16string(255, u'x').c_str()), STRSAFE_E_INSUFFICIENT_BUFFER);
    EXPECT_TRUE(image.bitmap);
    std::filesystem::resize_file(folder / "clear.png", std::filesystem::file_size(folder / "clear.png") - 20);
    EXPECT_TRUE(FAILED(image.Load(kClear)));
    EXPECT_FALSE(image.bitmap);
  });
}

TEST(ImageVisual, EachStepOfALoadMayFail) {
  enum Outcome { kDone, kNoPicture, kEmptyPicture };
  const std::pair<Operation, Outcome> loads[] = {
      {Operation::CreateCompatibleDC, kDone},         {Operation::CoInitializeEx, kNoPicture},
      {Operation::CoCreateInstance, kNoPicture},      {Operation::CreateImageFromFile, kNoPicture},
      {Operation::GetImageInfo, kNoPicture},          {Operation::CreateDIBSection, kNoPicture},
      {Operation::CreateBitmapFromImage, kNoPicture}, {Operation::LockBits, kEmptyPicture},
  };
  WithPictures([&](HDC dc, const auto&) {
    CImageVisual image;
    image.SetSize(3, 2);
    for (const auto& [operation, outcome] : loads) {
      phone::SetFault(operation, 1, 0);
      EXPECT_EQ(SUCCEEDED(image.Load(kOpaque)), outcome == kDone) << phone::OperationName(operation);
      EXPECT_EQ(static_cast<bool>(image.bitmap), outcome != kNoPicture) << phone::OperationName(operation);
    }
    phone::SetFault(Operation::CreateCompatibleDC, 1, 0);
    EXPECT_EQ(image.Draw(dc, VALUE_ABSOLUTE), E_OUTOFMEMORY);
    phone::SetFault(Operation::BitBlt, 1, 0);
    EXPECT_EQ(image.Draw(dc, VALUE_ABSOLUTE), E_FAIL);
    EXPECT_EQ(image.Draw(dc, VALUE_ABSOLUTE), S_OK);
  });
}

}  // namespace
