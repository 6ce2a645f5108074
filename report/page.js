'use strict';
(() => {
  const data = JSON.parse(document.getElementById('data').textContent);
  const frames = data.frames;
  const first = frames.first;
  const count = frames.input.length;
  const last = first + count - 1;
  const byId = (id) => document.getElementById(id);

  // ------------------------------------------------------------------ words and figures

  const element = (tag, properties = {}, ...children) => {
    const made = Object.assign(document.createElement(tag), properties);
    made.append(...children);
    return made;
  };
  const percent = (value) => (value === null ? '–' : value.toFixed(value < 10 ? 2 : 1) + ' %');
  const level = (value) => (value === null || value < 0 ? '–' : value.toFixed(2));
  const plural = (number, word) => `${number} ${word}${number === 1 ? '' : 's'}`;

  const timeOf = (frame) => {
    if (!data.frameRate) return '';
    const seconds = frame / data.frameRate;
    const minutes = Math.floor(seconds / 60);
    return `${minutes}:${(seconds - 60 * minutes).toFixed(2).padStart(5, '0')}`;
  };
  const spanText = (from, to) => (from === to ? `${from}` : `${from} to ${to}`);

  const change = (pair) => {
    const worse = pair.after > pair.before + 0.005;
    const cell = element('span', { className: worse ? 'worse' : 'better' });
    cell.textContent = `${percent(pair.before)} → ${percent(pair.after)}`;
    return cell;
  };

  const shotStarts = new Set(data.shots.map((shot) => shot.first));
  const shotAt = (frame) => data.shots.findIndex((shot) => frame >= shot.first && frame <= shot.last);
  const repeats = new Map(frames.repeats);
  const untouchedAt = (frame) => frames.untouched.some(([from, to]) => frame >= from && frame <= to);
  const outliers = data.shots.flatMap((shot, index) =>
    shot.outliers.map((outlier) => ({ ...outlier, shot: index })));
  const outlierAt = (frame) =>
    outliers.find((outlier) => frame >= outlier.first && frame <= outlier.last);

  // ------------------------------------------------------------------ header and tables

  byId('title').textContent = data.input;
  byId('subtitle').textContent = [
    `${data.width} × ${data.height}`,
    plural(data.clipFrames, 'frame') +
      (count === data.clipFrames ? '' : `, of which ${spanText(first, last)} were written`),
    data.frameRate ? `${Number(data.frameRate.toFixed(3))} fps` : '',
    data.output ? `written to ${data.output}` : '',
    data.seconds ? `in ${data.seconds.toFixed(1)} s` : '',
  ].filter(Boolean).join(' · ');

  const tile = (name, ...value) =>
    byId('figures').append(
      element('div', { className: 'figure' }, element('b', {}, ...value), element('span', {}, name)));
  const gain = (name, pair) =>
    tile(name, `${percent(pair.after)} `, element('small', {}, `from ${percent(pair.before)}`));
  const untouchedCount = frames.untouched.reduce((sum, [from, to]) => sum + to - from + 1, 0);
  gain('flicker', data.flickerPercent);
  gain('jerk', data.jerkPercent);
  tile(data.shots.length === 1 ? 'shot' : 'shots', `${data.shots.length}`);
  tile('repeated frames', `${frames.repeats.length}`);
  tile(outliers.length === 1 ? 'outlier' : 'outliers', `${outliers.length}`);
  tile('frames left as they were', `${untouchedCount}`);

  const table = (id, headings, rows) => {
    const head = element('tr', {}, ...headings.map((text) => element('th', { scope: 'col' }, text)));
    const body = element('tbody', {});
    for (const { frame, to, cells } of rows) {
      const row = element('tr', {}, ...cells.map((cell) => element('td', {}, cell)));
      if (frame !== undefined) {
        row.dataset.frame = frame;
        row.tabIndex = 0;
        const go = () => showFrames(frame, to);
        row.addEventListener('click', go);
        row.addEventListener('keydown', (event) => { if (event.key === 'Enter') go(); });
      }
      body.append(row);
    }
    byId(id).append(...(headings.length ? [element('thead', {}, head)] : []), body);
  };

  table('shots', ['Shot', 'Frames', 'Starts at', 'Flicker', 'Jerk', 'Notes'],
    data.shots.map((shot, index) => ({
      frame: shot.first,
      to: shot.last,
      cells: [
        `${index + 1}`, spanText(shot.first, shot.last), timeOf(shot.first),
        change(shot.flickerPercent), change(shot.jerkPercent),
        [
          shot.passedThrough ? 'would have come out worse: left as it was' : '',
          shot.matte ? `measured inside the bars (${shot.matte[0]}, ${shot.matte[1]} to ` +
            `${shot.matte[2]}, ${shot.matte[3]})` : '',
        ].filter(Boolean).join('; '),
      ],
    })));
  if (outliers.length) {
    table('outliers', ['Frames', 'At', 'What', 'Brightness', 'Why', 'Then'],
      outliers.map((outlier) => ({
        frame: outlier.first,
        to: outlier.last,
        cells: [
          spanText(outlier.first, outlier.last), timeOf(outlier.first), outlier.kind,
          `× ${outlier.ratio.toFixed(2)}`, outlier.reason, outlier.left ? 'left as it was' : 'corrected',
        ],
      })));
  } else {
    byId('outliers-section').hidden = true;
  }
  for (const id of ['settings', 'versions']) {
    table(id, [], Object.entries(data[id]).map(([name, value]) => ({ cells: [name, value] })));
  }

  // ------------------------------------------------------------------ the plot

  const curves = ['input', 'target', 'output'].map((name) => ({ name, values: frames[name], shown: true }));
  for (const curve of curves) {
    const key = element('span', { className: `key ${curve.name}` });
    key.style.borderTopColor = `var(--${curve.name})`;
    const button = element('button', { type: 'button', id: `show-${curve.name}` }, key, curve.name);
    button.setAttribute('aria-pressed', 'true');
    button.addEventListener('click', () => {
      curve.shown = !curve.shown;
      button.setAttribute('aria-pressed', String(curve.shown));
      draw();
    });
    byId('legend').append(button);
  }

  const plot = byId('plot');
  const kMargin = { left: 48, right: 12, top: 22, bottom: 24 };
  const kFewestFrames = Math.min(8, Math.max(1, count));
  const view = { from: first - 0.5, to: last + 0.5 };
  let pointed = null;

  const setView = (from, to) => {
    const span = Math.min(Math.max(to - from, kFewestFrames), count);
    const start = Math.min(Math.max(from + (to - from - span) / 2, first - 0.5), last + 0.5 - span);
    view.from = start;
    view.to = start + span;
    plot.dataset.from = view.from.toFixed(2);
    plot.dataset.to = view.to.toFixed(2);
    draw();
  };
  const wholeClip = () => setView(first - 0.5, last + 0.5);
  const zoom = (factor, around = (view.from + view.to) / 2) =>
    setView(around - (around - view.from) * factor, around + (view.to - around) * factor);
  const move = (by) => setView(view.from + by, view.to + by);
  const showFrames = (from, to) => {
    const margin = Math.max(10, (to - from + 1) * 0.1);
    point(Math.min(Math.max(from, first), last));
    setView(from - margin, to + margin);
    plot.scrollIntoView({ block: 'nearest' });
  };

  const inner = () => ({
    left: kMargin.left,
    right: plot.clientWidth - kMargin.right,
    top: kMargin.top,
    bottom: plot.clientHeight - kMargin.bottom,
  });
  const xOf = (frame, box) => box.left + (frame - view.from) / (view.to - view.from) * (box.right - box.left);
  const frameAt = (x, box) => view.from + (x - box.left) / (box.right - box.left) * (view.to - view.from);

  const niceStep = (range, wanted) => {
    const raw = range / wanted;
    const power = 10 ** Math.floor(Math.log10(raw));
    return power * ([1, 2, 5].find((factor) => factor * power >= raw) ?? 10);
  };

  // Level range of what is in view, with some air.
  const levelRange = (from, to) => {
    let low = Infinity;
    let high = -Infinity;
    for (const curve of curves.filter((each) => each.shown)) {
      for (let i = from; i <= to; ++i) {
        const value = curve.values[i];
        if (value === null || value < 0) continue;
        low = Math.min(low, value);
        high = Math.max(high, value);
      }
    }
    if (low > high) return [0, 255];
    const air = Math.max((high - low) * 0.08, 0.5);
    return [low - air, high + air];
  };

  // One stroke a curve. Where several frames share a pixel column, their lowest and highest level
  // are drawn, so that no flash gets lost. Shots are not joined.
  const stroke = (context, curve, from, to, box, yOf) => {
    const columns = box.right - box.left;
    const perColumn = Math.max(1, Math.floor((to - from + 1) / (2 * columns)));
    context.beginPath();
    let drawing = false;
    const lineTo = (index, value) => {
      const x = xOf(first + index, box);
      if (drawing) context.lineTo(x, yOf(value)); else context.moveTo(x, yOf(value));
      drawing = true;
    };
    for (let i = from; i <= to; i += perColumn) {
      let low = null;
      let high = null;
      for (let k = i; k < i + perColumn && k <= to; ++k) {
        if (shotStarts.has(first + k)) drawing = false;
        const value = curve.values[k];
        if (value === null || value < 0) continue;
        if (low === null || value < curve.values[low]) low = k;
        if (high === null || value > curve.values[high]) high = k;
      }
      if (low === null) {
        drawing = false;
        continue;
      }
      const [a, b] = low < high ? [low, high] : [high, low];
      lineTo(a, curve.values[a]);
      if (b !== a) lineTo(b, curve.values[b]);
    }
    context.stroke();
  };

  const draw = () => {
    const scale = window.devicePixelRatio || 1;
    plot.width = Math.round(plot.clientWidth * scale);
    plot.height = Math.round(plot.clientHeight * scale);
    const style = getComputedStyle(document.documentElement);
    const colour = (name) => style.getPropertyValue(`--${name}`);
    const context = plot.getContext('2d');
    context.scale(scale, scale);
    context.font = '12px system-ui, "DejaVu Sans", sans-serif';
    const box = inner();
    if (count === 0 || box.right <= box.left) return;
    const from = Math.max(0, Math.floor(view.from) - first);
    const to = Math.min(count - 1, Math.ceil(view.to) - first);
    const [low, high] = levelRange(from, to);
    const yOf = (value) => box.bottom - (value - low) / (high - low) * (box.bottom - box.top);

    context.save();
    context.beginPath();
    context.rect(box.left, 0, box.right - box.left, plot.clientHeight);
    context.clip();
    data.shots.forEach((shot, index) => {
      if (shot.last < view.from || shot.first > view.to) return;
      const left = Math.max(xOf(shot.first - 0.5, box), box.left);
      const right = Math.min(xOf(shot.last + 0.5, box), box.right);
      if (index % 2 === 1) {
        context.fillStyle = colour('band');
        context.fillRect(left, 0, right - left, box.bottom);
      }
      const label = `shot ${index + 1}`;
      if (data.shots.length > 1 && right - left > context.measureText(label).width + 8) {
        context.fillStyle = colour('faint');
        context.fillText(label, left + 5, 14);
      }
    });
    context.restore();

    context.fillStyle = colour('faint');
    context.strokeStyle = colour('line');
    context.lineWidth = 1;
    context.textAlign = 'right';
    const levelStep = niceStep(high - low, 6);
    for (let value = Math.ceil(low / levelStep) * levelStep; value <= high; value += levelStep) {
      const y = Math.round(yOf(value)) + 0.5;
      context.beginPath();
      context.moveTo(box.left, y);
      context.lineTo(box.right, y);
      context.stroke();
      context.fillText(Number(value.toFixed(4)).toString(), box.left - 6, y + 4);
    }
    context.textAlign = 'center';
    const frameStep = Math.max(1, niceStep(view.to - view.from, 10));
    for (let frame = Math.ceil(view.from / frameStep) * frameStep; frame <= view.to; frame += frameStep) {
      if (frame >= first && frame <= last) context.fillText(`${frame}`, xOf(frame, box), box.bottom + 17);
    }

    context.save();
    context.beginPath();
    context.rect(box.left, 0, box.right - box.left, box.bottom);
    context.clip();
    for (const curve of curves.filter((each) => each.shown)) {
      context.strokeStyle = colour(curve.name);
      context.lineWidth = curve.name === 'output' ? 2 : 1.3;
      context.setLineDash(curve.name === 'target' ? [6, 4] : []);
      stroke(context, curve, from, to, box, yOf);
    }
    context.setLineDash([]);
    context.fillStyle = colour('mark');
    for (const outlier of outliers) {
      const x = xOf((outlier.first + outlier.last) / 2, box);
      context.beginPath();
      context.moveTo(x - 5, box.top - 4);
      context.lineTo(x + 5, box.top - 4);
      context.lineTo(x, box.top + 5);
      context.fill();
    }
    if (pointed !== null) {
      const x = xOf(pointed, box);
      context.strokeStyle = colour('faint');
      context.lineWidth = 1;
      context.beginPath();
      context.moveTo(x, box.top);
      context.lineTo(x, box.bottom);
      context.stroke();
      for (const curve of curves.filter((each) => each.shown)) {
        const value = curve.values[pointed - first];
        if (value === null || value < 0) continue;
        context.fillStyle = colour(curve.name);
        context.beginPath();
        context.arc(x, yOf(value), 3.5, 0, 2 * Math.PI);
        context.fill();
      }
    }
    context.restore();
    layThumbnails(box);
  };

  // Thumbnails stand under their frames; those that would overlap are left out.
  const thumbnails = data.thumbnails.map(({ frame, picture }) => {
    const image = element('img', { src: picture, alt: `Frame ${frame}`, title: `Frame ${frame}` });
    image.addEventListener('load', () => layThumbnails(inner()));
    byId('strip').append(image);
    return { frame, image };
  });
  byId('strip').hidden = thumbnails.length === 0;
  const layThumbnails = (box) => {
    let free = -Infinity;
    for (const { frame, image } of thumbnails) {
      const x = xOf(frame, box);
      const half = image.offsetWidth / 2;
      const fits = x >= box.left && x <= box.right && x - half >= free;
      image.style.visibility = fits ? 'visible' : 'hidden';
      image.style.left = `${x}px`;
      if (fits) free = x + half + 4;
    }
  };

  const point = (frame) => {
    pointed = frame;
    plot.dataset.pointed = frame === null ? '' : frame;
    if (frame === null) {
      byId('readout').textContent = '';
      return;
    }
    const at = (name) => frames[name][frame - first];
    const outlier = outlierAt(frame);
    const shot = shotAt(frame);
    byId('readout').textContent = [
      `frame ${frame}` + (timeOf(frame) ? ` (${timeOf(frame)})` : ''),
      data.shots.length > 1 && shot >= 0 ? `shot ${shot + 1}` : '',
      `input ${level(at('input'))}`,
      `target ${level(at('target'))}`,
      `output ${level(at('output'))}`,
      at('input') > 0 ? `× ${(at('output') / at('input')).toFixed(3)}` : '',
      repeats.has(frame) ? `repeats ${repeats.get(frame)}` : '',
      untouchedAt(frame) ? 'left as it was' : '',
      outlier ? outlier.kind : '',
    ].filter(Boolean).join(' · ');
  };

  let dragged = null;
  plot.addEventListener('pointerdown', (event) => {
    plot.setPointerCapture(event.pointerId);
    dragged = { x: event.offsetX, from: view.from, to: view.to };
  });
  plot.addEventListener('pointermove', (event) => {
    const box = inner();
    if (dragged) {
      const by = (dragged.x - event.offsetX) / (box.right - box.left) * (dragged.to - dragged.from);
      setView(dragged.from + by, dragged.to + by);
    }
    point(Math.min(Math.max(Math.round(frameAt(event.offsetX, box)), first), last));
    draw();
  });
  const release = () => { dragged = null; };
  plot.addEventListener('pointerup', release);
  plot.addEventListener('pointercancel', release);
  plot.addEventListener('pointerleave', () => {
    if (dragged) return;
    point(null);
    draw();
  });
  plot.addEventListener('wheel', (event) => {
    event.preventDefault();
    zoom(event.deltaY < 0 ? 0.8 : 1.25, frameAt(event.offsetX, inner()));
  }, { passive: false });
  plot.addEventListener('dblclick', wholeClip);
  plot.addEventListener('keydown', (event) => {
    const step = { ArrowLeft: -1, ArrowRight: 1 }[event.key];
    if (step) {
      const next = Math.min(Math.max((pointed ?? Math.round((view.from + view.to) / 2)) + step, first), last);
      point(next);
      if (next < view.from || next > view.to) move(step * (view.to - view.from) / 2); else draw();
    } else if (event.key === '+') zoom(0.5);
    else if (event.key === '-') zoom(2);
    else if (event.key === '0') wholeClip();
    else return;
    event.preventDefault();
  });
  byId('zoom-in').addEventListener('click', () => zoom(0.5));
  byId('zoom-out').addEventListener('click', () => zoom(2));
  byId('zoom-all').addEventListener('click', wholeClip);

  // ------------------------------------------------------------------ before and after

  const wipe = byId('wipe');
  const line = byId('wipe-line');
  const wipeTo = (part) => {
    const at = Math.min(Math.max(part, 0), 100);
    wipe.style.setProperty('--at', `${at}%`);
    line.setAttribute('aria-valuenow', at.toFixed(0));
  };
  const compare = (index) => {
    const pair = data.comparisons[index];
    byId('wipe-before').src = pair.before;
    byId('wipe-after').src = pair.after;
    byId('wipe-text').textContent = `Frame ${pair.frame}: ${pair.why}`;
    [...byId('chips').children].forEach((chip, i) => chip.setAttribute('aria-pressed', String(i === index)));
  };
  data.comparisons.forEach((pair, index) => {
    const chip = element('button', { type: 'button', className: 'chip' }, `frame ${pair.frame}`);
    chip.addEventListener('click', () => compare(index));
    byId('chips').append(chip);
  });
  if (data.comparisons.length) compare(0); else byId('compare-section').hidden = true;
  const wipeToPointer = (event) => {
    const box = wipe.getBoundingClientRect();
    wipeTo((event.clientX - box.left) / box.width * 100);
  };
  wipe.addEventListener('pointerdown', (event) => {
    wipe.setPointerCapture(event.pointerId);
    wipeToPointer(event);
  });
  wipe.addEventListener('pointermove', (event) => { if (event.buttons & 1) wipeToPointer(event); });
  line.addEventListener('keydown', (event) => {
    const step = { ArrowLeft: -2, ArrowRight: 2 }[event.key];
    if (step) wipeTo(Number(line.getAttribute('aria-valuenow')) + step);
  });

  new ResizeObserver(draw).observe(plot);
  window.matchMedia('(prefers-color-scheme: dark)').addEventListener('change', draw);
  wholeClip();
})();
