import { parameter, setParameter } from "../../app/route";
import { Choice } from "../common/Choice";
import { intervalOf, intervalsMs } from "./mapSettings";
import { isUpwardChosen } from "./usePicture";

/** How often the map is asked for, and which way up it is. */
export function PictureControls({ startsAtBottom }: { startsAtBottom: boolean }): preact.JSX.Element {
  return (
    <fieldset>
      <legend>Picture</legend>
      <label class="row">
        Ask every
        <select
          value={String(intervalOf(parameter("every")))}
          onChange={(event) => setParameter("every", event.currentTarget.value)}
          data-test="every"
        >
          {intervalsMs.map((ms) => (
            <option value={String(ms)}>{`${ms / 1000} s`}</option>
          ))}
        </select>
      </label>
      <div class="row">
        Rows from the
        <Choice
          label="Rows from the"
          chosen={isUpwardChosen(startsAtBottom) ? "up" : "down"}
          options={[["down", "top"], ["up", "bottom"]]}
          onChoose={(rows) => setParameter("rows", rows)}
        />
      </div>
    </fieldset>
  );
}
