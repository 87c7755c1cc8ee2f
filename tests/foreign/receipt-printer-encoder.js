// @point-of-sale/receipt-printer-encoder: a chain of calls.

import ImageData from '@canvas/image-data';
import ReceiptPrinterEncoder from '@point-of-sale/receipt-printer-encoder';
import { pixelsOf } from './pictures.js';
import { lookOf } from './receipts.js';

const latin = /^[\0-\u00ff]*$/;
const epson = { model: 'GENERAL_EPSON_PROTOCOL', paper: 1, columns: 48 };
// The cutter sits so many lines behind the head: what isn't fed on stays on the next piece.
const feedBeforeCut = 4;
const pages = { codepageCandidates: ['cp437', 'cp866', 'cp852', 'cp858'] };

// StarPRNT is the command set of newer printers of Star: what it has in common with the line mode
// is all but how pages begin and end (ESC GS P) and one way to send pictures.
export const targets = {
  'encoder-epson': { ...epson, options: { language: 'esc-pos', columns: 48, imageMode: 'column', feedBeforeCut, ...pages } },
  'encoder-raster': { ...epson, options: { language: 'esc-pos', columns: 48, imageMode: 'raster', newline: '\n', feedBeforeCut, ...pages } },
  'encoder-t20iii': { ...epson, options: { printerModel: 'epson-tm-t20iii', ...pages } },
  'encoder-citizen': { model: 'CITIZEN_CTS_2000', columns: 48, options: { printerModel: 'citizen-ct-s310ii', ...pages } },
  'encoder-tg2480': {
    model: 'CUSTOM_TG_2480_H', columns: 35, letters: latin,
    options: { language: 'esc-pos', columns: 35, feedBeforeCut, codepageMapping: { cp437: 0, cp850: 2, cp858: 19 } },
  },
  'encoder-starline': { model: 'TSP-TUP', columns: 48, options: { printerModel: 'star-tsp650ii', ...pages } },
  'encoder-starprnt': { model: 'TSP-TUP', columns: 48, options: { printerModel: 'star-tsp100iv', ...pages } },
};

const isStar = ({ options }) => /star/.test(options.printerModel ?? '');

const writers = {
  line(encoder, step, target) {
    const { text, align = 'left', size = [1, 1], bold, italic, underline, invert, font } = step;
    if (font) encoder.font(font);
    encoder.align(align).size(size[0], size[1]).bold(!!bold).italic(!!italic).underline(!!underline).invert(!!invert);
    encoder.line(text).size(1, 1).bold(false).italic(false).underline(false).invert(false).align('left');
    if (font) encoder.font('A');
    const effects = ['bold', 'underline', 'invert', ...(isStar(target) ? [] : ['italic'])];
    return { kind: 'text', text, look: lookOf(step, ...effects) };
  },
  columns(encoder, { cells }, { columns }) {
    const width = Math.floor(columns / cells.length);
    encoder.table(cells.map((_, i) => ({ width, align: i + 1 === cells.length ? 'right' : 'left' })), [cells]);
    return { kind: 'cells', cells };
  },
  rule(encoder) {
    encoder.rule({ style: 'single' });
    return { kind: 'rule' };
  },
  picture(encoder, { name, align }) {
    const { width, height, data } = pixelsOf(name);
    if (width % 8 || height % 8) return null;
    encoder.align(align).image(new ImageData(new Uint8ClampedArray(data), width, height), width, height, 'threshold').align('left');
    return { kind: 'picture', width, height };
  },
  qr(encoder, { payload, size, level, model = 2 }) {
    encoder.qrcode(payload, { model, size, errorlevel: level });
    return { kind: 'code', symbology: 'QrCode', payload };
  },
  barcode(encoder, { type, payload, height, width, text, align = 'left' }) {
    if (!encoder.printerCapabilities.barcodes.symbologies.includes(type)) return null;
    encoder.align(align).barcode(payload, type, { height, width: width - 1, text }).align('left');
    return { kind: 'code', symbology: type, payload };
  },
  pdf417(encoder, { payload }) {
    encoder.pdf417(payload, { width: 3, height: 3, columns: 0, rows: 0, errorlevel: 1 });
    return { kind: 'code', symbology: 'Pdf417', payload };
  },
  cut(encoder, { kind }) {
    encoder.cut(kind);
    return { kind: 'cut', isPartial: kind === 'partial' };
  },
  drawer(encoder, { pin }) {
    encoder.pulse(pin === 2 ? 0 : 1, 100, 300);
    return { kind: 'pulse', pin, on: 100, off: 300 };
  },
  feed(encoder, { lines }) {
    encoder.newline(lines);
  },
  spacing(encoder, { to }) {
    encoder.lineSpacing(to === 'wide' ? 'none' : 'default');
  },
};

export async function streamOf(target, steps) {
  const encoder = new ReceiptPrinterEncoder(target.options);
  encoder.initialize().codepage('auto');
  const content = steps.map((step) => writers[step.step]?.(encoder, step, target)).filter(Boolean);
  return { bytes: Buffer.from(encoder.encode()), content, options: target.options };
}
