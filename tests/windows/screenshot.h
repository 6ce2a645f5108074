// tests/windows/screenshot.h — a window as it stands on the screen, in a picture file.
#pragma once

#include <windows.h>

#include <cstdio>
#include <fstream>
#include <vector>

// A bitmap file of the window with its frame.
inline bool saveScreenshot(HWND window, const char* file) {
  RECT area{};
  if (GetWindowRect(window, &area) == 0) return false;
  const int width = area.right - area.left;
  const int height = area.bottom - area.top;
  HDC screen = GetDC(nullptr);
  HDC memory = CreateCompatibleDC(screen);
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* pixels = nullptr;
  HBITMAP bitmap = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
  bool saved = false;
  if (bitmap != nullptr) {
    HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
    GdiFlush();
    const auto bytes = static_cast<DWORD>(width * height * 4);
    BITMAPFILEHEADER header{};
    header.bfType = 0x4D42;  // "BM"
    header.bfOffBits = sizeof header + sizeof info.bmiHeader;
    header.bfSize = header.bfOffBits + bytes;
    std::ofstream out(file, std::ios::binary);
    out.write(reinterpret_cast<const char*>(&header), sizeof header);
    out.write(reinterpret_cast<const char*>(&info.bmiHeader), sizeof info.bmiHeader);
    out.write(static_cast<const char*>(pixels), static_cast<std::streamsize>(bytes));
    saved = out.good();
    SelectObject(memory, before);
    DeleteObject(bitmap);
  }
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
  return saved;
}
