#pragma once

#include "editor/LICE_IBitmap.h"
#include "editor/Types.h"

namespace Grimworks {

// Drawing into bitmaps. Everything is clipped to the destination; a null or empty bitmap takes every call and
// nothing happens. `alpha` is a weight of 0..1 on the pixel's own alpha, which counts only in the modes of
// LICE_BlendMode with LICE_UseAlpha; the product 0 changes nothing and 1 overwrites.

/// How a pixel meets the one below: put over it, added to it, or multiplied with it.
enum LICE_BlendMode : int {
    LICE_Copy = 0,
    LICE_Add = 1,
    LICE_Multiply = 2,
    LICE_UseAlpha = 0x10000 ///< combined with one of the above: the pixel's own alpha counts
};

/// Puts one pixel; outside the bitmap it does nothing.
void LICE_PutPixel(LICE_IBitmap* dest, int x, int y, LICE_pixel color, float alpha = 1.0F,
                   int mode = LICE_UseAlpha);

/// The pixel at x, y; 0 outside.
[[nodiscard]] LICE_pixel LICE_GetPixel(LICE_IBitmap* source, int x, int y);

/// Sets every pixel to the colour.
void LICE_Clear(LICE_IBitmap* dest, LICE_pixel color);

/// Draws the part `srcRect` of the source with its corner at x, y. What lies outside the source is left out.
void LICE_Blit(LICE_IBitmap* dest, LICE_IBitmap* src, int x, int y, const IRECT& srcRect, float alpha = 1.0F,
               int mode = LICE_UseAlpha);

/// Draws the part `srcRect` of the source over the whole of `destRect`, bigger or smaller, each pixel the
/// nearest of the source.
void LICE_ScaledBlit(LICE_IBitmap* dest, LICE_IBitmap* src, const IRECT& destRect, const IRECT& srcRect,
                     float alpha = 1.0F, int mode = LICE_UseAlpha);

void LICE_FillRect(LICE_IBitmap* dest, int x, int y, int w, int h, LICE_pixel color, float alpha = 1.0F,
                   int mode = LICE_UseAlpha);

/// The outline of a rectangle of w by h pixels, inside it, each pixel drawn once.
void LICE_DrawRect(LICE_IBitmap* dest, int x, int y, int w, int h, LICE_pixel color, float alpha = 1.0F,
                   int mode = LICE_UseAlpha);

/// A line with both its ends, one pixel for each step of the longer side. Clipping changes no pixel: what is
/// drawn are exactly those of the whole line that lie inside. With `aa` each step shares its colour between
/// the two nearest pixels instead. Coordinates beyond 2^29 count as that.
void LICE_Line(LICE_IBitmap* dest, int x1, int y1, int x2, int y2, LICE_pixel color, float alpha = 1.0F,
               int mode = LICE_UseAlpha, bool aa = false);

/// A filled triangle. Of a row, the pixels from the left to the right edge are drawn, both rounded to the
/// nearest; the corners belong to it, and each pixel is drawn once.
void LICE_FillTriangle(LICE_IBitmap* dest, int x1, int y1, int x2, int y2, int x3, int y3, LICE_pixel color,
                       float alpha = 1.0F, int mode = LICE_UseAlpha);

} // namespace Grimworks
