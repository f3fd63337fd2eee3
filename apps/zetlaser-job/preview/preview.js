// The page of zetlaser-job preview. What it shows stands in the element "data"; the 3D library is three.js.
'use strict';

const data = JSON.parse(document.getElementById('data').textContent);
const texts = data.texts;
const all = -1; // instead of a ply's position: the whole part
const lineScale = 0.5; // the widths of the scene are made for a screen on a wall

function fill(text, ...values) {
  return values.reduce((filled, value, i) => filled.replace('%' + (i + 1), value), text);
}

function unpack(text, ArrayType) {
  const bytes = Uint8Array.from(atob(text), (letter) => letter.charCodeAt(0));
  return new ArrayType(bytes.buffer);
}

function element(name, className, text) {
  const made = document.createElement(name);
  if (className) made.className = className;
  if (text !== undefined) made.textContent = text;
  return made;
}

function round(number) {
  return String(Math.round(number * 100) / 100);
}

// ---- The scene ----

class Scene {
  constructor(canvas) {
    this.canvas = canvas;
    this.renderer = new THREE.WebGLRenderer({canvas, antialias: true});
    this.renderer.setClearColor(0x12161c);
    this.renderer.setPixelRatio(window.devicePixelRatio);
    this.scene = new THREE.Scene();
    this.camera = new THREE.PerspectiveCamera(30, 1, 1, 1000);
    // The part lies as it does for whoever lays the plies. Ahead of the controls, which turn about this direction.
    this.camera.up.set(...data.sides[data.layingSide].toEye);
    this.lineMaterials = [];
    this.box = new THREE.Box3();
    this.surface = this.addSurfaces(data.surfaces);
    this.plies = data.plies.map((ply) => this.addPly(ply));
    this.targets = data.targets.map((target) => unpack(target.content[0].points, Float32Array))
      .map((place) => new THREE.Vector3(place[0], place[1], place[2]));
    this.addLights();
    this.controls = new THREE.OrbitControls(this.camera, canvas);
    this.controls.enableKeys = false; // the arrow keys step through the plies
    this.controls.screenSpacePanning = true;
    this.controls.addEventListener('change', () => this.draw());
    this.afterDrawing = () => {};
  }

  addLights() {
    this.scene.add(this.camera);
    const light = new THREE.DirectionalLight(0xffffff, 0.75);
    light.position.set(-0.4, 0.6, 1);
    this.camera.add(light); // from the eye's upper left, wherever it goes
    this.scene.add(new THREE.AmbientLight(0xffffff, 0.35));
  }

  addSurfaces(surfaces) {
    const group = new THREE.Group();
    // A little behind its place, so that lines on it aren't broken by it when they are hidden behind it.
    const material = new THREE.MeshLambertMaterial({color: 0x5c6b80, side: THREE.DoubleSide, polygonOffset: true,
      polygonOffsetFactor: 2, polygonOffsetUnits: 4});
    for (const surface of surfaces) {
      const geometry = new THREE.BufferGeometry();
      geometry.setAttribute('position', new THREE.BufferAttribute(unpack(surface.points, Float32Array), 3));
      geometry.setAttribute('normal', new THREE.BufferAttribute(unpack(surface.normals, Float32Array), 3));
      geometry.setIndex(new THREE.BufferAttribute(unpack(surface.indices, Uint32Array), 1));
      geometry.computeBoundingBox();
      this.box.union(geometry.boundingBox);
      group.add(new THREE.Mesh(geometry, material));
    }
    this.scene.add(group);
    return group;
  }

  addPly(ply) {
    const objects = {};
    for (const [type, content] of Object.entries(ply.objects)) {
      objects[type] = new THREE.Group();
      for (const part of content) objects[type].add(part.kind === 'lines' ? this.makeLines(part) : this.makeMarkers(part));
      this.scene.add(objects[type]);
    }
    return objects;
  }

  makeLines(part) {
    const geometry = new THREE.LineSegmentsGeometry();
    geometry.setPositions(unpack(part.points, Float32Array));
    const material = new THREE.LineMaterial({color: part.color, linewidth: lineScale * part.width,
      depthTest: part.depth, transparent: true});
    this.lineMaterials.push(material);
    this.box.union(geometry.boundingBox);
    return this.finish(new THREE.LineSegments2(geometry, material), part);
  }

  makeMarkers(part) {
    const geometry = new THREE.BufferGeometry();
    geometry.setAttribute('position', new THREE.BufferAttribute(unpack(part.points, Float32Array), 3));
    const material = new THREE.PointsMaterial({color: part.color, size: 3 * window.devicePixelRatio, sizeAttenuation: false,
      depthTest: part.depth, transparent: true});
    geometry.computeBoundingBox();
    this.box.union(geometry.boundingBox);
    return this.finish(new THREE.Points(geometry, material), part);
  }

  finish(object, part) {
    object.renderOrder = part.priority;
    object.frustumCulled = false; // the counts below are those of the scene, wherever the eye is
    object.userData = {depth: part.depth};
    return object;
  }

  resize() {
    const {clientWidth, clientHeight} = this.canvas.parentElement;
    this.renderer.setSize(clientWidth, clientHeight, false);
    for (const material of this.lineMaterials) material.resolution.set(clientWidth, clientHeight);
    this.camera.aspect = clientWidth / clientHeight;
    this.camera.updateProjectionMatrix();
    this.draw();
  }

  /** Looks at the whole part from one of the sides. */
  lookFrom(side) {
    const box = this.box.clone();
    for (const target of this.targets) box.expandByPoint(target);
    const half = box.getSize(new THREE.Vector3()).multiplyScalar(0.5);
    const reach = (v) => Math.abs(v.x) * half.x + Math.abs(v.y) * half.y + Math.abs(v.z) * half.z;
    const slope = Math.tan(this.camera.fov * Math.PI / 360);
    const toEye = new THREE.Vector3(...side.toEye);
    const getDistance = (up) => {
      const right = up.clone().cross(toEye);
      return 1.12 * Math.max(reach(up) / slope, reach(right) / slope / this.camera.aspect, 1) + reach(toEye);
    };
    let up = this.camera.up.clone().addScaledVector(toEye, -this.camera.up.dot(toEye)); // as the controls will have it
    if (up.length() < 1e-3) { // from above or below: upright, or turned clockwise if that fills the window better
      up = new THREE.Vector3(...side.up);
      const turned = toEye.clone().cross(up);
      if (getDistance(turned) < getDistance(up)) up = turned;
    }
    up.normalize();
    const distance = getDistance(up);
    const centre = box.getCenter(new THREE.Vector3());
    this.camera.near = distance / 1000;
    this.camera.far = 20 * (distance + half.length());
    this.camera.updateProjectionMatrix();
    this.controls.target.copy(centre);
    // From above and below the eye stands a little aside, so that the controls know which way is up in the picture.
    const aside = Math.sign(this.camera.up.dot(toEye)) * -1e-4 * distance;
    this.camera.position.copy(centre).addScaledVector(toEye, distance).addScaledVector(up, aside);
    this.controls.update();
    this.draw();
  }

  /** Shows what isShown(position, type) says, and the plies that isBeneath(position) weakly. */
  show(isShown, isBeneath, options) {
    this.surface.visible = options.surface;
    this.plies.forEach((objects, position) => {
      for (const [type, group] of Object.entries(objects)) {
        group.visible = isShown(position, Number(type));
        for (const object of group.children) {
          object.material.opacity = isBeneath(position) ? 0.3 : 1;
          object.material.depthTest = object.userData.depth || !options.hidden;
        }
      }
    });
    this.draw();
  }

  draw() {
    this.renderer.render(this.scene, this.camera);
    this.afterDrawing();
  }

  /** What the graphics library was really given to draw, without the tool. */
  getDrawn() {
    const {triangles, points} = this.renderer.info.render;
    let ofSurface = 0;
    let perSegment = 1;
    if (this.surface.visible) for (const mesh of this.surface.children) ofSurface += mesh.geometry.index.count / 3;
    this.scene.traverse((object) => {
      if (object.isLineSegments2) perSegment = object.geometry.index.count / 3;
    });
    return {segments: (triangles - ofSurface) / perSegment, markers: points};
  }

  /** Where a point comes to lie on the canvas; null behind the eye. */
  place(point) {
    const at = point.clone().project(this.camera);
    if (at.z > 1) return null;
    const {clientWidth, clientHeight} = this.canvas.parentElement;
    return {x: (at.x + 1) / 2 * clientWidth, y: (1 - at.y) / 2 * clientHeight};
  }
}

// ---- What stands around it ----

class Page {
  constructor() {
    this.current = all;
    this.types = new Set([0, 1, 2, 3, 4]);
    this.options = {beneath: false, surface: true, targets: true, hidden: true};
    for (const labelled of document.querySelectorAll('[data-text]')) labelled.textContent = texts[labelled.dataset.text];
    for (const titled of document.querySelectorAll('[data-title]')) titled.title = texts[titled.dataset.title];
    document.getElementById('part').textContent = data.name;
    this.items = this.listPlies();
    try {
      this.scene = new Scene(document.getElementById('view'));
    } catch (error) {
      const problem = document.getElementById('problem');
      problem.textContent = texts.noWebGL;
      problem.hidden = false;
      this.tell();
      throw error;
    }
    this.targets = this.addTargets();
    this.scene.afterDrawing = () => this.placeTargets();
    this.addSwitches();
    this.addSides();
    this.listen();
    this.scene.resize();
    this.scene.lookFrom(data.sides[data.side]);
    this.select(all);
  }

  listPlies() {
    const list = document.getElementById('plies');
    let group = null;
    return data.plies.map((ply, position) => {
      const name = ply.layup + ' · ' + ply.sequence;
      if (name !== group) list.append(element('li', 'group', name));
      group = name;
      const item = element('li');
      item.append(element('span', 'position', position + 1), element('span', 'name', ply.name),
        element('span', 'direction', fill(texts.direction, round(ply.direction))));
      item.addEventListener('click', () => this.select(position));
      list.append(item);
      return item;
    });
  }

  addTargets() {
    const layer = document.getElementById('targets');
    return data.targets.map((target) => {
      const mark = element('div');
      mark.style.color = target.content[0].color;
      mark.append(element('span', '', target.name));
      layer.append(mark);
      return mark;
    });
  }

  placeTargets() {
    this.targets.forEach((mark, i) => {
      const at = this.options.targets ? this.scene.place(this.scene.targets[i]) : null;
      mark.hidden = !at;
      mark.style.display = at ? '' : 'none';
      if (at) mark.style.transform = `translate(${at.x}px, ${at.y}px)`;
    });
  }

  addSwitch(text, isOn, change, id) {
    const label = element('label');
    const box = element('input');
    box.type = 'checkbox';
    box.checked = isOn;
    box.id = 'show-' + id;
    box.addEventListener('change', () => { change(box.checked); box.blur(); this.show(); });
    const count = element('span', 'count');
    label.append(box, text, count);
    document.getElementById('switches').append(label);
    return count;
  }

  addSwitches() {
    this.counts = {};
    for (const type of Object.keys(texts.types)) {
      if (!data.plies.some((ply) => type in ply.objects)) continue;
      const change = (isOn) => isOn ? this.types.add(Number(type)) : this.types.delete(Number(type));
      this.counts[type] = this.addSwitch(texts.types[type], true, change, type);
    }
    if (data.targets.length)
      this.addSwitch(texts.targets, true, (isOn) => { this.options.targets = isOn; }, 'targets').textContent = data.targets.length;
    if (data.surfaces.length) {
      this.addSwitch(texts.surface, true, (isOn) => { this.options.surface = isOn; }, 'surface');
      this.addSwitch(texts.hidden, true, (isOn) => { this.options.hidden = isOn; }, 'hidden');
    }
    this.addSwitch(texts.beneath, false, (isOn) => { this.options.beneath = isOn; }, 'beneath');
  }

  addSides() {
    data.sides.forEach((side, i) => {
      const button = element('button', '', texts.sides[i]);
      button.type = 'button';
      button.addEventListener('click', () => { button.blur(); this.scene.lookFrom(side); });
      document.getElementById('sides').append(button);
    });
  }

  listen() {
    const last = data.plies.length - 1;
    const step = (by) => this.select(Math.min(Math.max(this.current + by, 0), last));
    const keys = {
      ArrowRight: () => step(1), ArrowDown: () => step(1), ArrowLeft: () => step(-1), ArrowUp: () => step(-1),
      Home: () => this.select(0), End: () => this.select(last), a: () => this.select(all),
      r: () => this.scene.lookFrom(data.sides[data.side]),
    };
    document.addEventListener('keydown', (event) => {
      const act = keys[event.key.length === 1 ? event.key.toLowerCase() : event.key];
      if (!act || event.ctrlKey || event.altKey || event.metaKey) return;
      event.preventDefault();
      act();
    });
    document.getElementById('previous').addEventListener('click', (event) => { event.currentTarget.blur(); step(-1); });
    document.getElementById('next').addEventListener('click', (event) => { event.currentTarget.blur(); step(1); });
    document.getElementById('part').addEventListener('click', () => this.select(all));
    window.addEventListener('resize', () => this.scene.resize());
  }

  select(position) {
    this.current = position;
    this.items.forEach((item, i) => item.classList.toggle('current', i === position));
    if (position !== all) this.items[position].scrollIntoView({block: 'nearest'});
    this.show();
  }

  isShown(position) {
    return this.current === all || position === this.current || (this.options.beneath && position < this.current);
  }

  show() {
    this.scene.show((position, type) => this.isShown(position) && this.types.has(type),
      (position) => this.current !== all && position !== this.current, this.options);
    for (const [type, count] of Object.entries(this.counts))
      count.textContent = data.plies.filter((ply, position) => this.isShown(position) && type in ply.objects).length;
    this.tell();
  }

  /** Says which ply is shown, and for whoever checks the page also how much is drawn. */
  tell() {
    const ply = data.plies[this.current];
    const put = (id, text) => { document.getElementById(id).textContent = text; };
    put('number', ply ? fill(texts.plyOf, this.current + 1, data.plies.length) + ' · ' + ply.layup + ' · ' + ply.sequence
      : fill(texts.plyCount, data.plies.length));
    put('ply', ply ? ply.name : texts.allPlies);
    put('details', ply ? [ply.material + (ply.materialDetails ? ' (' + ply.materialDetails + ')' : ''),
      fill(texts.direction, round(ply.direction))].filter((text) => text).join(', ') : '');
    if (!this.scene) return;
    const drawn = this.scene.getDrawn();
    Object.assign(document.body.dataset, {current: this.current, segments: drawn.segments, markers: drawn.markers});
  }
}

window.preview = new Page();
