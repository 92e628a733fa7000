import { signal } from "@preact/signals";
import { useEffect } from "preact/hooks";

type ViewComponent = () => preact.JSX.Element;

/** A view that is loaded when it is first shown, to keep the page's first load small. */
export function lazyView(load: () => Promise<ViewComponent>): ViewComponent {
  const loaded = signal<{ View: ViewComponent } | null>(null);
  const hasFailed = signal(false);
  return function LazyView() {
    useEffect(() => {
      hasFailed.value = false;
      load().then(
        (View) => (loaded.value = { View }),
        () => (hasFailed.value = true),
      );
    }, []);
    if (loaded.value !== null) {
      const { View } = loaded.value;
      return <View />;
    }
    return hasFailed.value ? (
      <p class="panel alarm" role="alert" data-test="view-missing">
        This view couldn't be loaded: the web server doesn't answer, or has another version of it. Reload the page.
      </p>
    ) : (
      <p class="faint">Loading the view …</p>
    );
  };
}
