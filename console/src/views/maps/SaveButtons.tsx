import { areaOf } from "../../charts/heat/heatArea";
import { csvOfCounts, csvOfPoints } from "../../charts/heat/heatCsv";
import type { HeatPicture } from "../../charts/heat/heatPicture";
import { download, fileName } from "../common/download";
import { pointsIn } from "./points";

export interface SaveButtonsProps {
  picture: HeatPicture;
  canvas: () => HTMLCanvasElement | null;
  /** What the files' names begin with. */
  name: string;
}

/** Saves what is shown. */
export function SaveButtons(props: SaveButtonsProps): preact.JSX.Element {
  const { picture, name } = props;
  const saveCsv = (): void => download(fileName(name, "csv"), new Blob([csvOf(picture)], { type: "text/csv" }));
  const savePng = (): void =>
    props.canvas()?.toBlob((blob) => {
      if (blob !== null) {
        download(fileName(name, "png"), blob);
      }
    });
  return (
    <div class="row">
      <button type="button" onClick={saveCsv} title="The numbers of what is shown" data-test="csv">
        Save CSV
      </button>
      <button type="button" onClick={savePng} title="The picture as it is" data-test="png">
        Save PNG
      </button>
    </div>
  );
}

function csvOf({ points, map, shown }: HeatPicture): string {
  const area = areaOf(shown);
  return points === null
    ? csvOfCounts(map, area)
    : csvOfPoints(pointsIn(points, map.rows, area), ["column", "share"]);
}
