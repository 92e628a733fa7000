import "./app/styles.css";
import { render } from "preact";
import { App } from "./app/App";
import { startState } from "./app/state";
import { startTitle } from "./app/title";

startState();
startTitle();
render(<App />, document.getElementById("console")!);
