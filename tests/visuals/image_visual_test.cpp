#include "visuals/image_visual.h"

#include <gtest/gtest.h>
#include <strsafe.h>

#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "base/status.h"
#include "graphics/trace.h"
#include "support/on_phone.h"
#include "support/png_file.h"
#include "system/faults.h"

namespace {

using phone::DrawKind;
using phone::Operation;

constexpr LPCWSTR kOpaque = TEXT("\\opaque.png");
constexpr LPCWSTR kClear = TEXT("\\clear.png");

/// Runs a body on a phone that has a picture of 2x3 without alpha and one of 1x2 with it.
void WithPictures(const std::function<void(HDC dc, const std::filesystem::path& folder)>& body) {
  OnPhone([&](TestHost&, const std::filesystem::path& folder) {
    ASSERT_TRUE(
        WritePng(folder / "opaque.png", 2, 3, false, {255, 0, 0, 0, 255, 0, 0, 0, 255, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
    ASSERT_TRUE(WritePng(folder / "clear.png", 1, 2, true, {255, 100, 0, 51, 9, 9, 9, 0}));
    const OwnedDC dc(CreateCompatibleDC(nullptr));
    const OwnedBitmap target(CreateCompatibleBitmap(dc.get(), 20, 20));
    SelectObject(dc.get(), target.get());
    phone::BeginTrace();
    body(dc.get(), folder);
  });
}

std::vector<BYTE> Bytes(const CImageVisual& image) {
  BITMAP info = {};
  GetObjectW(image.bitmap.get(), sizeof(info), &info);
  std::vector<BYTE> bytes(static_cast<std::size_t>(info.bmWidthBytes) * info.bmHeight);
  std::memcpy(bytes.data(), info.bmBits, bytes.size());
  return bytes;
}

TEST(ImageVisual, HoldsPremultipliedRowsBottomUp) {
  WithPictures([](HDC, const auto&) {
    CImageVisual image;
    ASSERT_EQ(image.Load(kOpaque), S_OK);
    EXPECT_EQ(image.hasAlpha, 0);
    EXPECT_EQ(Bytes(image), (std::vector<BYTE>{6, 5, 4, 255, 9, 8, 7,   255, 255, 0,   0, 255,
                                               3, 2, 1, 255, 0, 0, 255, 255, 0,   255, 0, 255}));
    ASSERT_EQ(image.Load(kClear), S_OK);
    EXPECT_EQ(image.hasAlpha, 1);
    EXPECT_EQ(Bytes(image), (std::vector<BYTE>{0, 0, 0, 0, 0, 20, 51, 51}));
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
      {kClear, 2, 1, 255, DrawKind::AlphaBlend, 1},  {kClear, 5, 5, 1, DrawKind::AlphaBlend, 1},
  };
  WithPictures([&](HDC dc, const auto&) {
    for (const auto& drawing : cases) {
      CImageVisual image;
      image.SetPosition(3, 4);
      image.SetSize(drawing.height, drawing.width);
      image.SetAlpha(drawing.alpha);
      ASSERT_EQ(image.Load(drawing.path), S_OK);
      phone::BeginTrace();
      EXPECT_EQ(image.Draw(dc, VALUE_ABSOLUTE), S_OK);
      const std::uint64_t contexts = phone::CallCount(Operation::CreateCompatibleDC);
      EXPECT_EQ(image.Draw(dc, VALUE_ABSOLUTE), S_OK);
      EXPECT_EQ(phone::CallCount(Operation::CreateCompatibleDC), contexts);
      ASSERT_EQ(phone::TraceRecords().size(), 2u);
      const phone::DrawRecord& record = phone::TraceRecords()[1];
      EXPECT_EQ(record.kind, drawing.kind);
      EXPECT_EQ(record.rect.left, 3);
      EXPECT_EQ(record.rect.top, 4);
      EXPECT_EQ(record.rect.right, 3 + drawing.width);
      EXPECT_EQ(record.rect.bottom, 4 + drawing.height);
      if (drawing.kind == DrawKind::AlphaBlend) {
        EXPECT_EQ(record.alpha, drawing.alpha);
        EXPECT_EQ(record.alpha_format, drawing.format);
      }
    }
  });
}

TEST(ImageVisual, DrawsNothingWhenThereIsNothingToSee) {
  WithPictures([](HDC dc, const auto&) {
    CImageVisual image;
    image.SetSize(3, 2);
    EXPECT_EQ(image.Draw(dc, VALUE_ABSOLUTE), E_OUTOFMEMORY);
    image.SetVisible(2);
    EXPECT_EQ(image.Draw(dc, VALUE_ABSOLUTE), S_OK);
    image.SetVisible(1);
    image.SetAlpha(0);
    EXPECT_EQ(image.Draw(dc, VALUE_ABSOLUTE), S_OK);
    image.SetAlpha(255);
    ASSERT_EQ(image.Load(kOpaque), S_OK);
    image.SetSize(0, 2);
    EXPECT_EQ(image.Draw(dc, VALUE_ABSOLUTE), S_OK);
    EXPECT_TRUE(phone::TraceRecords().empty());
    image.Release();
    EXPECT_EQ(image.Draw(dc, VALUE_ABSOLUTE), E_OUTOFMEMORY);
  });
}

TEST(ImageVisual, OnlyARefusedPathKeepsTheOldPicture) {
  WithPictures([](HDC, const std::filesystem::path& folder) {
    CImageVisual image;
    ASSERT_EQ(image.Load(kOpaque), S_OK);
    EXPECT_EQ(image.Load(nullptr), E_OUTOFMEMORY);
    EXPECT_EQ(image.Load(std::u16string(255, u'x').c_str()), STRSAFE_E_INSUFFICIENT_BUFFER);
    EXPECT_TRUE(image.bitmap);
    EXPECT_TRUE(FAILED(image.Load(TEXT("\\missing.png"))));
    EXPECT_FALSE(image.bitmap);

    ASSERT_TRUE(WritePng(folder / "cut.png", 64, 64, false, std::vector<std::uint8_t>(64 * 64 * 3, 77)));
    std::filesystem::resize_file(folder / "cut.png", std::filesystem::file_size(folder / "cut.png") - 30);
    EXPECT_TRUE(FAILED(image.Load(TEXT("\\cut.png"))));
    EXPECT_FALSE(image.bitmap);
    std::ofstream(folder / "text.png") << "no picture at all";
    EXPECT_TRUE(FAILED(image.Load(TEXT("\\text.png"))));
    EXPECT_FALSE(image.bitmap);
  });
}

TEST(ImageVisual, EachStepOfALoadAndADrawMayFail) {
  struct {
    Operation operation;
    bool fails;
    bool picture;  // whether a bitmap, empty as it is, stays
  } const loads[] = {
      {Operation::CreateCompatibleDC, false, true},    {Operation::CoInitializeEx, true, false},
      {Operation::CoCreateInstance, true, false},      {Operation::CreateImageFromFile, true, false},
      {Operation::GetImageInfo, true, false},          {Operation::CreateDIBSection, true, false},
      {Operation::CreateBitmapFromImage, true, false}, {Operation::LockBits, true, true},
  };
  WithPictures([&](HDC dc, const auto&) {
    CImageVisual image;
    image.SetSize(3, 2);
    for (const auto& load : loads) {
      SCOPED_TRACE(phone::OperationName(load.operation));
      phone::SetFault(load.operation, 1, 0);
      const HRESULT status = image.Load(kOpaque);
      phone::SetFault(load.operation, 0, 0);
      EXPECT_EQ(FAILED(status), load.fails);
      EXPECT_EQ(static_cast<bool>(image.bitmap), load.picture);
    }
    ASSERT_EQ(image.Load(kOpaque), S_OK) << "the platform is left as it was";
    phone::SetFault(Operation::CreateCompatibleDC, 1, 0);
    EXPECT_EQ(image.Draw(dc, VALUE_ABSOLUTE), E_OUTOFMEMORY);
    phone::SetFault(Operation::BitBlt, 1, 0);
    EXPECT_EQ(image.Draw(dc, VALUE_ABSOLUTE), E_FAIL);
    EXPECT_EQ(image.Draw(dc, VALUE_ABSOLUTE), S_OK);
  });
}

}  // namespace
