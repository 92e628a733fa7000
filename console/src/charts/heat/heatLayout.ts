export interface Rect {
  left: number;
  top: number;
  width: number;
  height: number;
}

/** Where the parts of a picture are; those that have no room are missing. */
export interface HeatLayout {
  map: Rect;
  above: Rect | null;
  beside: Rect | null;
  bar: Rect | null;
}

const margin = { left: 58, right: 10, top: 10, bottom: 40 };
const projection = 64;
const gap = 8;
const barWidth = 14;
const barLabels = 52;
const roomForProjections = 380;

/** `aspect` is width by height of the map; null fills the place. `hasBar` keeps room for the colour bar. */
export function layoutOf(width: number, height: number, aspect: number | null, hasBar: boolean): HeatLayout {
  const besideRoom = width >= roomForProjections ? projection + gap : 0;
  const aboveRoom = height >= roomForProjections * 0.6 ? projection + gap : 0;
  const barRoom = hasBar ? barWidth + barLabels + gap : 0;
  const room: Extent = {
    width: Math.max(20, width - margin.left - margin.right - besideRoom - barRoom),
    height: Math.max(20, height - margin.top - margin.bottom - aboveRoom),
  };
  const size = fitted(room, aspect);
  const map: Rect = { left: margin.left + (room.width - size.width) / 2, top: margin.top + aboveRoom, ...size };
  const right = map.left + map.width;
  return {
    map,
    above: aboveRoom === 0 ? null : { ...map, top: margin.top, height: projection },
    beside: besideRoom === 0 ? null : { ...map, left: right + gap, width: projection },
    bar: hasBar ? { ...map, left: right + gap + besideRoom, width: barWidth } : null,
  };
}

interface Extent {
  width: number;
  height: number;
}

/** A very long map isn't drawn thinner than this. */
const leastPart = 0.12;

function fitted(room: Extent, aspect: number | null): Extent {
  if (aspect === null || !(aspect > 0)) {
    return room;
  }
  const width = Math.max(Math.min(room.width, room.height * aspect), room.width * leastPart);
  const height = Math.max(Math.min(room.height, room.width / aspect), room.height * leastPart);
  return { width, height };
}
