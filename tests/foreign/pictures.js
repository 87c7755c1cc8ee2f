// Pictures that are easy to tell apart, as pixels and as PNG.

import { PNG } from 'pngjs';

const black = {
  // A frame with a triangle in it.
  logo: { width: 128, height: 64, at: (x, y) => x < 2 || y < 2 || x > 125 || y > 61 || (y > 16 && y < 48 && Math.abs(x - 64) < y - 16) },
  // Stripes of growing width.
  wide: { width: 384, height: 40, at: (x, y) => Math.floor(Math.sqrt(8 * x + 1)) % 2 === 0 && y > 3 && y < 36 },
  // More rows than one command takes in some encoders.
  tall: { width: 64, height: 600, at: (x, y) => (x * 9 + y) % 64 < 4 || x < 1 || x > 62 },
  // Neither side is a multiple of eight.
  odd: { width: 100, height: 37, at: (x, y) => (x >> 2) % 2 === (y >> 2) % 2 },
};

/** Width, height and four bytes for each pixel. */
export function pixelsOf(name) {
  const { width, height, at } = black[name];
  const data = Buffer.alloc(4 * width * height, 255);
  for (let y = 0; y < height; y++) {
    for (let x = 0; x < width; x++) {
      if (at(x, y)) data.fill(0, 4 * (width * y + x), 4 * (width * y + x) + 3);
    }
  }
  return { width, height, data };
}

export function pngOf(name) {
  const { width, height, data } = pixelsOf(name);
  const png = new PNG({ width, height });
  data.copy(png.data);
  return PNG.sync.write(png, { colorType: 6 });
}
