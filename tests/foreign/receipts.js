// What is to be printed, without any printer's or encoder's words: each receipt is a list of steps.
// An encoder that can't do a step leaves it out, and says so by returning nothing for it.

const line = (text, look = {}) => ({ step: 'line', text, ...look });
const columns = (...cells) => ({ step: 'columns', cells });
const rule = () => ({ step: 'rule' });
const picture = (name, align = 'center') => ({ step: 'picture', name, align });
const qr = (payload, look = {}) => ({ step: 'qr', payload, size: 6, level: 'm', ...look });
const barcode = (type, payload, look = {}) => ({ step: 'barcode', type, payload, height: 60, width: 2, text: true, ...look });
const pdf417 = (payload) => ({ step: 'pdf417', payload });
const feed = (lines) => ({ step: 'feed', lines });
const cut = (kind = 'full') => ({ step: 'cut', kind });
const drawer = (pin) => ({ step: 'drawer', pin });

const items = (count) => {
  const goods = ['Apples', 'Bread', 'Coffee', 'Dates', 'Eggs', 'Flour', 'Grapes', 'Honey'];
  return Array.from({ length: count }, (_, i) =>
    columns(`${goods[i % goods.length]} ${i + 1}`, (1.25 + 0.5 * i).toFixed(2)));
};

const sizes = (widths) => widths.flatMap((w) => widths.map((h) => line(`${w} x ${h}`, { size: [w, h] })));

/** How a line is to look, for its reader: enlarged, and with which effects. */
export function lookOf({ size = [1, 1], ...look }, ...possible) {
  const names = { bold: 'bold', italic: 'italic', underline: 'underline', invert: 'inverse', upsideDown: 'upsideDown' };
  return { scale: size, effects: possible.filter((name) => look[name]).map((name) => names[name]) };
}

export const receipts = {
  grocery: [
    line('Harbour Kiosk', { align: 'center', size: [2, 2] }),
    line('12 Quay Street', { align: 'center' }),
    rule(), ...items(6), rule(),
    line('TOTAL 17.25', { align: 'right', size: [1, 2], bold: true }),
    line('Thank you', { align: 'center', underline: true }), cut(),
  ],
  cyrillic: [
    line('Магазин «Якорь»'.replace(/[«»]/g, '"'), { align: 'center', size: [2, 1] }),
    line('Съешь же ещё этих мягких французских булок,'), line('да выпей чаю. ЁЖИК ЩУКА ЭХО'),
    columns('Хлеб ржаной', '45.00'), columns('Молоко 3,2%', '82.50'), columns('Сыр', '311.20'),
    rule(), line('ИТОГО 438.70', { align: 'right', size: [2, 2], bold: true }),
    line('Спасибо за покупку!', { align: 'center', underline: true }), cut(),
  ],
  accents: [
    line('Épicerie de la Forêt', { align: 'center', bold: true }),
    columns('Crème brûlée', '4.20'), columns('Größe Käse Übung', '7.90'),
    columns('Señor Núñez, año', '3.10'), columns('Smörgås på fårö', '6.60'),
    line('Ça va? Où? Àéîõü ¡Olé! ½ ¼ °'), cut(),
  ],
  central: [
    line('Žluťoučký kůň úpěl ďábelské ódy'), line('Zażółć gęślą jaźń'),
    line('Árvíztűrő tükörfúrógép'), line('Ştiinţă, măr, Đuro'), cut(),
  ],
  mixed: [
    line('Latin é, кириллица ж, Latin ü'), columns('Чай Earl Grey déjà', '9.99'), line('Ж é Ж é Ж'), cut(),
  ],
  sizes: [...sizes([1, 2]), line('3 x 3', { size: [3, 3] }), line('4 x 4', { size: [4, 4] }),
    line('5 x 5', { size: [5, 5] }), line('6 x 6', { size: [6, 6] }), line('end'), cut()],
  looks: [
    line('bold', { bold: true }), line('underlined', { underline: true }), line('white on black', { invert: true }),
    line('all at once', { bold: true, underline: true, invert: true, size: [2, 2] }),
    line('italic', { italic: true }), line('upside down', { upsideDown: true }), line('small font', { font: 'B' }), line('plain'), cut(),
  ],
  alignment: [
    line('left'), line('centre', { align: 'center' }), line('right', { align: 'right' }),
    line('wide centre', { align: 'center', size: [2, 1] }), line('wide right', { align: 'right', size: [2, 2] }),
    line('left again'), cut(),
  ],
  columns: [
    columns('Quantity', 'Name', 'Sum'), columns('2', 'Tea', '3.50'), columns('10', 'Milk, whole', '12.00'),
    columns('left', 'right'), columns('a', 'b', 'c', 'd'), cut(),
  ],
  wrapped: [line('A line so long that it has to go on below, since no paper of ours is so wide as that'), cut()],
  pictures: [line('before'), picture('logo'), line('between'), feed(2), picture('wide', 'left'), line('again'), feed(2),
    picture('odd', 'right'), line('behind'), cut()],
  longpicture: [line('top'), picture('tall'), line('bottom'), cut()],
  qr: [
    line('pay here', { align: 'center' }), qr('https://example.com/r/0001'), line('or here'),
    qr('t=20261122T0712&s=438.70&fn=9251440300046840&i=2571&fp=1445932875&n=1', { level: 'q', size: 4 }),
    line('digits'), qr('0123456789', { level: 'h', size: 8 }), line('a letter'), qr('L', { level: 'l', size: 3 }), line('end'), cut(),
  ],
  foreignqr: [line('before'), qr('Чек 42'), line('behind'), cut()],
  barcodes: [
    barcode('upca', '01234567890'), barcode('upce', '01200000345'), barcode('ean13', '590123412345'), barcode('ean8', '9638507'),
    barcode('code39', 'ABC-1234'), barcode('itf', '12345678'), barcode('codabar', 'A12345B'),
    barcode('code93', 'CODE93'), barcode('code128', 'Code 128'), line('end'), cut(),
  ],
  morebarcodes: [
    barcode('code128', '00123456789', { width: 3, text: false }), line('without digits'), barcode('code128', '{x}', { height: 100 }),
    barcode('code39', 'A B$C', { width: 3, align: 'center' }), barcode('ean13', '4006381333931', { height: 120, align: 'right' }),
    barcode('gs1-128', '0109501101530003'), barcode('gs1-databar-omni', '0950110153000'),
    barcode('gs1-databar-expanded', '0109501101530003'), line('end'), cut(),
  ],
  twodimensional: [pdf417('PDF417 with 42 letters'), line('between'), qr('model 1', { model: 1 }), line('end'), cut()],
  drawer: [line('open'), drawer(2), line('and the other'), drawer(5), line('shut'), cut()],
  two: [
    line('first receipt', { bold: true }), columns('Tea', '1.00'), cut('partial'),
    line('второй чек'), columns('Чай', '2.00'), line('é'), cut(),
  ],
  long: [line('many lines'), ...items(120), line('the last'), cut()],
  uncut: [line('nothing cuts this')],
  spaced: [{ step: 'spacing', to: 'wide' }, line('one'), line('two'), { step: 'spacing', to: 'default' },
    feed(3), line('three'), { step: 'beep' }, line('four'), cut()],
  // What the benchmarks read.
  twenty: [
    line('Harbour Kiosk', { align: 'center', size: [2, 1], bold: true }), line('12 Quay Street', { align: 'center' }),
    line('Чек № 000042'.replace('№', 'No'), { align: 'center' }), rule(), ...items(10), rule(),
    line('TOTAL 35.00', { align: 'right', size: [1, 2], bold: true }), columns('VAT 20 %', '5.83'), columns('Cash', '40.00'),
    columns('Change', '5.00'), line('Thank you', { align: 'center' }), cut(),
  ],
};
