// The connection to the program: messages out, messages in. docs/live.md lists them.

export class Link {
  /** `handlers`: a function for each type of message; `closed` when the connection has ended. */
  constructor(handlers) {
    this.handlers = handlers;
    this.socket = new WebSocket(`ws://${location.host}${location.pathname}ws`);
    this.socket.binaryType = "arraybuffer";
    this.socket.onmessage = ({ data }) => this.take(data);
    this.socket.onclose = () => handlers.closed();
  }

  take(data) {
    const message = typeof data === "string" ? JSON.parse(data) : readScene(data);
    const handler = this.handlers[message.t];
    if (handler) handler(message);
  }

  send(message) {
    if (this.socket.readyState === WebSocket.OPEN) this.socket.send(JSON.stringify(message));
  }

  /** An action of the device or the user, as a line of a session. */
  act(line) { this.send({ do: line }); }
}

/** Length of the header, the header, then the coordinates of all polylines as 32-bit floats relative to its origin. */
function readScene(buffer) {
  const length = new DataView(buffer).getUint32(0, true);
  const header = JSON.parse(new TextDecoder().decode(new Uint8Array(buffer, 4, length)));
  const coordinates = new Float32Array(buffer, 4 + length);
  let at = 0;
  header.shapes = header.shapes.map(([handle, layer, colour, counts]) => ({ handle, layer, colour,
    lines: counts.map((count) => coordinates.subarray(at, (at += 3 * count))) }));
  return header;
}
