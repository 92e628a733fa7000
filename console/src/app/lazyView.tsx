import { signal } from "@preact/signals";
import { useEffect } from "preact/hooks";
import { loadPart } from "../base/loadPart";
import { faultOf } from "../server/poll";

type ViewComponent = () => preact.JSX.Element;

/** A view that is loaded when it is first shown, to keep the page's first load small. */
export function lazyView(load: () => Promise<ViewComponent>): ViewComponent {
  const loaded = signal<{ View: ViewComponent } | null>(null);
  const fault = signal<string | null>(null);
  return function LazyView() {
    useEffect(() => {
      fault.value = null;
      loadPart("This view", load).then(
        (View) => (loaded.value = { View }),
        (error: unknown) => (fault.value = faultOf(error)),
      );
    }, []);
    if (loaded.value !== null) {
      const { View } = loaded.value;
      return <View />;
    }
    return fault.value === null ? (
      <p class="faint">Loading the view …</p>
    ) : (
      <p class="panel alarm" role="alert" data-test="view-missing">{fault.value}</p>
    );
  };
}
