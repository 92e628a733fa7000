import "./app/styles.css";
import { render } from "preact";
import { App } from "./app/App";
import { startState } from "./app/state";

startState();
render(<App />, document.getElementById("console")!);
