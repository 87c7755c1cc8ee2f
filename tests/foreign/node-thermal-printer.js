// node-thermal-printer: calls that fill a buffer.

import thermal from 'node-thermal-printer';
import { pixelsOf, pngOf } from './pictures.js';
import { lookOf } from './receipts.js';

const { CharacterSet, PrinterTypes, ThermalPrinter } = thermal;

// Its other types are Epson's with other pictures and cuts.
export const targets = {
  'thermal-epson': { model: 'GENERAL_EPSON_PROTOCOL', paper: 1, columns: 48, options: { type: PrinterTypes.EPSON } },
  // Custom's printers have a Cyrillic set in some firmwares only, and then by Epson's number.
  'thermal-custom': { model: 'GENERAL_EPSON_PROTOCOL', paper: 1, columns: 48, options: { type: PrinterTypes.CUSTOM } },
  'thermal-tg2480': {
    model: 'CUSTOM_TG_2480_H', columns: 35, letters: /^[\0-\u00ff]*$/,
    options: { type: PrinterTypes.CUSTOM, characterSet: CharacterSet.PC858_EURO },
  },
  'thermal-star': { model: 'TSP-TUP', columns: 48, options: { type: PrinterTypes.STAR } },
};

const isStar = ({ options }) => options.type === PrinterTypes.STAR;

const epsonTypes = {
  upca: 65, upce: 66, ean13: 67, ean8: 68, code39: 69, itf: 70, codabar: 71, code93: 72, code128: 73, 'gs1-128': 74,
  'gs1-databar-omni': 75, 'gs1-databar-expanded': 78,
};
const starTypes = { upce: 0, upca: 1, ean8: 2, ean13: 3, code39: 4, itf: 5, code128: 6, code93: 7, codabar: 8 };

function setSize(printer, size, target) {
  const name = { '1x1': 'setTextNormal', '2x1': 'setTextDoubleWidth', '1x2': 'setTextDoubleHeight', '2x2': 'setTextQuadArea' }[size.join('x')];
  if (name) printer[name]();
  else if (!isStar(target)) printer.setTextSize(size[1] - 1, size[0] - 1);
}

const writers = {
  line(printer, step, target) {
    const { text, align, bold, underline, invert, font, upsideDown } = step;
    const size = isStar(target) && step.size?.[0] > 2 ? [1, 1] : step.size ?? [1, 1];
    ({ left: () => printer.alignLeft(), center: () => printer.alignCenter(), right: () => printer.alignRight() })[align ?? 'left']();
    // ESC ! of the sizes sets bold and underline too.
    setSize(printer, size, target);
    if (font) printer.setTypeFontB();
    if (bold) printer.bold(true);
    if (underline) printer.underline(true);
    if (invert) printer.invert(true);
    if (upsideDown) printer.upsideDown(true);
    printer.println(text);
    printer.setTextNormal();
    if (size[0] > 2 && !isStar(target)) printer.setTextSize(0, 0);
    if (upsideDown) printer.upsideDown(false);
    if (invert) printer.invert(false);
    if (underline) printer.underline(false);
    if (bold) printer.bold(false);
    if (font) printer.setTypeFontA();
    printer.alignLeft();
    return { kind: 'text', text, look: lookOf({ ...step, size }, 'bold', 'underline', 'invert', 'upsideDown') };
  },
  columns(printer, { cells }) {
    if (cells.length === 2) printer.leftRight(cells[0], cells[1]);
    else printer.table(cells);
    return { kind: 'cells', cells };
  },
  rule(printer) {
    printer.drawLine();
    return { kind: 'rule' };
  },
  async picture(printer, { name, align }) {
    const { width, height } = pixelsOf(name);
    if (align === 'center') printer.alignCenter();
    if (align === 'right') printer.alignRight();
    await printer.printImageBuffer(pngOf(name));
    printer.alignLeft();
    return { kind: 'picture', width, height };
  },
  qr(printer, { payload, size, level, model = 2 }) {
    printer.printQR(payload, { cellSize: size, correction: level.toUpperCase(), correctionLevel: level.toUpperCase(), model });
    return { kind: 'code', symbology: 'QrCode', payload };
  },
  barcode(printer, { type, payload, height, width, text }, target) {
    const number = (isStar(target) ? starTypes : epsonTypes)[type];
    if (number === undefined) return null;
    const look = isStar(target) ? { characters: text ? 2 : 1, mode: width - 1, height } : { hriPos: text ? 2 : 0, hriFont: 0, width, height };
    printer.printBarcode(payload, number, look);
    return { kind: 'code', symbology: type, payload };
  },
  pdf417(printer, { payload }) {
    printer.pdf417(payload);
    return { kind: 'code', symbology: 'Pdf417', payload };
  },
  cut(printer, { kind }) {
    if (kind === 'partial') printer.partialCut();
    else printer.cut();
    return { kind: 'cut', isPartial: kind === 'partial' };
  },
  drawer(printer, { pin }, target) {
    if (pin !== 2) return null;
    printer.openCashDrawer();
    return isStar(target) ? { kind: 'pulse', pin, on: 110, off: 550 } : { kind: 'pulse', pin };
  },
  beep(printer, step, target) {
    if (isStar(target)) return null;
    printer.beep(2, 3);
    return { kind: 'beep' };
  },
  feed(printer, { lines }) {
    for (let i = 0; i < lines; i++) printer.newLine();
  },
  spacing(printer, { to }, target) {
    if (target.options.type !== PrinterTypes.EPSON) return;
    if (to === 'wide') printer.setLineSpacing(80);
    else printer.resetLineSpacing();
  },
};

export async function streamOf(target, steps) {
  const options = { width: target.columns, characterSet: CharacterSet.PC866_CYRILLIC2, ...target.options };
  const printer = new ThermalPrinter(options);
  const content = [];
  for (const step of steps) {
    const made = await writers[step.step]?.(printer, step, target);
    if (made) content.push(made);
  }
  return { bytes: Buffer.from(printer.getBuffer()), content, options };
}
