// receiptline: a markup language of its own, which it turns into printers' commands.

import receiptline from 'receiptline';
import { pixelsOf, pngOf } from './pictures.js';
import { lookOf } from './receipts.js';

const epson = { model: 'GENERAL_EPSON_PROTOCOL', paper: 1, columns: 48 };
const citizen = { model: 'CITIZEN_CTS_2000', columns: 48 };
const star = { model: 'TSP-TUP', columns: 48 };

// Of its other dialects: sii has commands (DC2) that no printer of ours knows, starimpact has a
// head of nine needles, and those for Japanese, Chinese and Thai differ in texts alone.
export const targets = {
  'receiptline-epson': { ...epson, options: { command: 'epson', encoding: 'multilingual' } },
  'receiptline-epson-866': { ...epson, letters: /^[\0-\x7fА-яЁё]*$/, options: { command: 'epson', encoding: 'cp866' } },
  'receiptline-spaced': { ...epson, options: { command: 'epson', encoding: 'multilingual', spacing: true, margin: 2, cpl: 44 } },
  'receiptline-turned': { ...epson, isTurned: true, skips: ['wrapped'], options: { command: 'epson', encoding: 'multilingual', upsideDown: true } },
  'receiptline-generic': { ...epson, options: { command: 'generic', encoding: 'multilingual' } },
  'receiptline-fujitsu': { ...epson, options: { command: 'fit', encoding: 'multilingual' } },
  'receiptline-impact': { ...epson, without: ['qr', 'barcode'], options: { command: 'impact', encoding: 'multilingual', cpl: 40 } },
  'receiptline-citizen': { ...citizen, options: { command: 'citizen', encoding: 'multilingual' } },
  'receiptline-starline': { ...star, options: { command: 'starlinesbcs', encoding: 'multilingual' } },
  'receiptline-staremulator': { ...star, options: { command: 'emustarlinesbcs', encoding: 'multilingual' } },
  'receiptline-starprnt': { ...star, options: { command: 'starsbcs', encoding: 'multilingual' } },
  'receiptline-stargraphic': { ...star, without: ['line', 'columns', 'rule', 'qr', 'barcode', 'drawer'], options: { command: 'stargraphic', encoding: 'multilingual' } },
};

const escaped = (text) => text.replace(/[\\|{}\-=~_"`^]/g, '\\$&');
const escapedValue = (text) => text.replace(/[\\|{};]/g, '\\$&');

const sizeMarks = { '1x1': '', '2x1': '^', '1x2': '^^', '2x2': '^^^', '3x3': '^^^^', '4x4': '^^^^^', '5x5': '^^^^^^', '6x6': '^^^^^^^' };
const barcodeTypes = { upca: 'upc', upce: 'upc', ean13: 'ean', ean8: 'ean', code39: 'code39', itf: 'itf', codabar: 'codabar', code93: 'code93', code128: 'code128' };
const aligned = (text, align) => ({ left: `|${text}`, right: `${text}|`, center: text })[align ?? 'left'];

const writers = {
  line(step, { options }) {
    const { text, align, size = [1, 1], bold, underline, invert } = step;
    // The dot matrix prints no larger than double, and red for white on black.
    const look = options.command === 'impact' ? {} : { look: lookOf(step, 'bold', 'underline', 'invert') };
    const mark = sizeMarks[size.join('x')];
    const before = (underline ? '_' : '') + (bold ? '"' : '') + (invert ? '`' : '') + mark;
    const after = mark + (invert ? '`' : '') + (bold ? '"' : '') + (underline ? '_' : '');
    return { markup: aligned(before + escaped(text) + after, align), content: { kind: 'text', text, ...look } };
  },
  columns({ cells }) {
    return { markup: cells.map(escaped).join(' | '), content: { kind: 'cells', cells } };
  },
  rule: () => ({ markup: '-', content: { kind: 'rule' } }),
  cut: () => ({ markup: '=', content: { kind: 'cut' } }),
  picture({ name, align }) {
    const { width, height } = pixelsOf(name);
    return { markup: `{a:${align};i:${pngOf(name).toString('base64')}}{a:center}`.replace('}{', '}\n{'), content: { kind: 'picture', width, height } };
  },
  qr({ payload, size, level, model }) {
    if (model) return null;
    const cell = Math.max(3, size);
    return { markup: `{c:${escapedValue(payload)};o:qrcode,${cell},${level}}`, content: { kind: 'code', symbology: 'QrCode', payload, isPicture: true } };
  },
  barcode({ type, payload, height, width, text }) {
    if (!barcodeTypes[type]) return null;
    // It wants the six digits of a UPC-E, and sends eleven.
    const data = type === 'upce' ? payload[0] + payload.slice(1, 3) + payload.slice(8, 11) + payload[3] : payload;
    return {
      markup: `{c:${escapedValue(data)};o:${barcodeTypes[type]},${width},${height},${text ? 'hri' : 'nohri'}}`,
      content: { kind: 'code', symbology: type, payload },
    };
  },
  drawer({ pin }, { options }) {
    const isStar = options.command.includes('star');
    const command = isStar ? '\\x1b\\x07\\x14\\x14' + (pin === 2 ? '\\x07' : '\\x1a') : `\\x1bp${pin === 2 ? '0' : '1'}\\x32\\x64`;
    const content = isStar ? { kind: 'pulse', pin, on: 200, off: 200 } : { kind: 'pulse', pin, on: 100, off: 200 };
    return { markup: `{x:${command}}`, content };
  },
  feed: ({ lines }) => ({ markup: Array(lines).fill('').join('\n') }),
};

export async function streamOf(target, steps) {
  const possible = steps.filter(({ step }) => !target.without?.includes(step));
  // Turned papers are printed from their last line on: their end is cut when all is printed.
  const last = target.isTurned && possible[possible.length - 1].step === 'cut' ? [possible.pop()] : [];
  const written = possible.map((step) => writers[step.step]?.(step, target)).filter(Boolean);
  const document = written.map((each) => each.markup).join('\n');
  const options = { cpl: target.columns, cutting: last.length > 0, gradient: false, ...target.options };
  return {
    bytes: Buffer.from(receiptline.transform(document, options), 'latin1'),
    content: [...last.map(() => ({ kind: 'cut' })), ...written.map((each) => each.content).filter(Boolean)],
    options,
  };
}
