// Large drawings: all lines in one buffer of the graphics card, which is filled once and drawn with each camera.

const kVertex = `#version 300 es
uniform vec3 target, right, up, direction;
uniform vec2 centre, half_size;
uniform float scale, distance_, near, is_perspective;
in vec3 at;
in vec3 colour;
out vec3 ink;
void main() {
  vec3 p = at - target;
  vec3 eye = vec3(dot(p, right), dot(p, up), dot(p, direction) + distance_);
  ink = colour;
  float depth = is_perspective > 0.5 ? eye.z : distance_;
  vec2 pixel = eye.xy * scale * distance_ + (centre - half_size) * vec2(1, -1) * depth;
  gl_Position = vec4(pixel / half_size, (is_perspective > 0.5 ? depth - 2.0 * near : 0.0), depth);
}`;
const kFragment = `#version 300 es
precision mediump float;
in vec3 ink;
out vec4 result;
void main() { result = vec4(ink, 1); }`;

function compiled(gl, type, source) {
  const shader = gl.createShader(type);
  gl.shaderSource(shader, source);
  gl.compileShader(shader);
  return shader;
}

/** Red, green and blue, 0 to 1, of "rgb(1 2 3)". */
const channels = (css) => css.match(/\d+/g).slice(0, 3).map((v) => Number(v) / 255);

export class GlLines {
  constructor(canvas) {
    this.canvas = canvas;
  }

  /** Whether the browser has it. Asked for a large drawing only: a context costs time with every picture. */
  get isThere() {
    this.gl ??= this.canvas.getContext("webgl2", { antialias: true }) || false;
    return this.gl !== false;
  }

  /** Colours have changed. */
  forget() { this.version = -1; }

  prepare() {
    const { gl } = this, program = gl.createProgram();
    gl.attachShader(program, compiled(gl, gl.VERTEX_SHADER, kVertex));
    gl.attachShader(program, compiled(gl, gl.FRAGMENT_SHADER, kFragment));
    gl.linkProgram(program);
    this.program = program;
    this.places = Object.fromEntries(["target", "right", "up", "direction", "centre", "half_size", "scale", "distance_", "near",
      "is_perspective"].map((name) => [name, gl.getUniformLocation(program, name)]));
    this.buffer = gl.createBuffer();
    gl.bindBuffer(gl.ARRAY_BUFFER, this.buffer);
    for (const [name, offset] of [["at", 0], ["colour", 12]]) {
      const place = gl.getAttribLocation(program, name);
      gl.enableVertexAttribArray(place);
      gl.vertexAttribPointer(place, 3, gl.FLOAT, false, 24, offset);
    }
  }

  fill(drawing, colour) {
    const values = new Float32Array(drawing.segments * 12);
    let at = 0;
    for (const [index, shapes] of drawing.byColour()) {
      const ink = channels(colour(index));
      for (const { lines } of shapes)
        for (const line of lines)
          for (let i = 0; i + 5 < line.length && at < values.length; i += 3)
            for (const from of [i, i + 3]) {
              values.set(line.subarray(from, from + 3), at);
              values.set(ink, at + 3);
              at += 6;
            }
    }
    this.count = at / 6;
    this.gl.bufferData(this.gl.ARRAY_BUFFER, values.subarray(0, at), this.gl.STATIC_DRAW);
    this.drawing = drawing;
    this.version = drawing.version;
  }

  clear(width, height, ratio) {
    if (!this.gl) return;
    const pixels = [Math.round(width * ratio), Math.round(height * ratio)];
    if (this.canvas.width !== pixels[0] || this.canvas.height !== pixels[1])
      Object.assign(this.canvas, { width: pixels[0], height: pixels[1] });
    this.ratio = ratio;
    this.gl.viewport(0, 0, ...pixels);
    this.gl.clearColor(0, 0, 0, 0);
    this.gl.clear(this.gl.COLOR_BUFFER_BIT);
  }

  draw(projection, drawing, colour) {
    const { gl } = this, { camera, direction, right, up, distance, near, scale, cx, cy, box } = projection;
    if (!this.program) this.prepare();
    if (this.drawing !== drawing || this.version !== drawing.version) this.fill(drawing, colour);
    const width = this.canvas.width / this.ratio, height = this.canvas.height / this.ratio, set = this.places;
    if (box) {
      gl.enable(gl.SCISSOR_TEST);
      gl.scissor(box.x * this.ratio, (height - box.y - box.height) * this.ratio, box.width * this.ratio, box.height * this.ratio);
    }
    gl.useProgram(this.program);
    for (const [name, value] of Object.entries({ target: camera.target, right, up, direction })) gl.uniform3fv(set[name], value);
    gl.uniform2f(set.centre, cx, cy);
    gl.uniform2f(set.half_size, width / 2, height / 2);
    gl.uniform1f(set.scale, scale);
    gl.uniform1f(set.distance_, distance);
    gl.uniform1f(set.near, near);
    gl.uniform1f(set.is_perspective, camera.isPerspective ? 1 : 0);
    gl.drawArrays(gl.LINES, 0, this.count);
    gl.disable(gl.SCISSOR_TEST);
  }
}
