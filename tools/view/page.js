// Puts the parts of the page together. Tests find what is drawn in window.zlmim.
class Page {
    constructor(data) {
        this.data = data;
        this.errors = [];
        window.addEventListener('error', (event) => this.errors.push(event.message));
        this.panel = byId('details');
        this.tree = new Tree(data, byId('parts'), {
            onSelect: (number) => this.select(number),
            onShow: (number, isShown) => this.show(number, isShown),
        });
        showFindings(byId('findings'), data, (number, chunk) => this.select(number, chunk));
        byId('tab-findings').append(...findingsBadge(data));
        showAbout(byId('about'), data);
        this.showTitle();
        this.setUpTabs();
        this.setUpTheme();
        byId('help').onclick = () => byId('keys').showModal();
    }

    showTitle() {
        const { title, asset } = this.data;
        document.title = title;
        byId('title').textContent = title;
        byId('subtitle').textContent = [asset.kuid, asset.kind, asset.author].filter(Boolean).join(' · ');
    }

    setUpTabs() {
        const tabs = [...document.querySelectorAll('[role=tab]')];
        const open = (tab) => tabs.forEach((each) => {
            each.ariaSelected = String(each === tab);
            each.tabIndex = each === tab ? 0 : -1;
            byId(each.getAttribute('aria-controls')).hidden = each !== tab;
        });
        tabs.forEach((tab, i) => {
            tab.onclick = () => open(tab);
            tab.onkeydown = ({ key }) => {
                const to = tabs[i + { ArrowLeft: -1, ArrowRight: 1 }[key]];
                if (to) {
                    open(to);
                    to.focus();
                }
            };
        });
        if (this.data.problems.length > 0)
            open(byId('tab-findings'));
    }

    // The system's theme, until the button is pressed.
    setUpTheme() {
        const system = matchMedia('(prefers-color-scheme: dark)');
        const set = (isDark) => {
            document.documentElement.dataset.theme = isDark ? 'dark' : 'light';
            if (this.stage) {
                this.stage.useThemeColours();
                this.model.updateOutline();
            }
        };
        set(system.matches);
        system.onchange = () => set(system.matches);
        byId('theme').onclick = () => set(document.documentElement.dataset.theme !== 'dark');
    }

    // Once the glTF is loaded.
    start(gltf) {
        this.model = new Model(gltf, this.data.nodes);
        this.stage.scene.add(gltf.scene);
        this.stage.hasGrid = true;
        this.stage.setBox(this.model.box);
        this.stage.useThemeColours();
        this.stage.beforeDraw.push(() => this.model.updateMarkers());
        this.stage.onDraw.push(() => this.placeLabels());
        this.player = new Player(gltf, this.stage);
        this.labels = new Map();
        this.setUpToolbar();
        this.setUpPlayer();
        this.setUpPicking();
        document.addEventListener('keydown', (event) => this.onKey(event));
        this.look('corner');
        byId('message').textContent = this.model.meshes.length === 0 ? 'There is nothing to draw.' : '';
        this.stage.draw();
    }

    setUpToolbar() {
        const toggle = (id, change) => {
            byId(id).onclick = () => change(press(byId(id)));
        };
        for (const id of ['textures', 'wireframe', 'normals'])
            toggle(id, (isOn) => {
                this.model.setLook({ [id]: isOn });
                this.stage.redraw();
            });
        toggle('points', (isOn) => this.tree.showAll(this.tree.ofKind('attachment'), isOn));
        toggle('bones', (isOn) => this.tree.showAll(this.tree.ofKind('bone'), isOn));
        toggle('grid', (isOn) => {
            this.stage.hasGrid = isOn;
            this.stage.redraw();
        });
        byId('points').hidden = this.tree.ofKind('attachment').length === 0;
        byId('bones').hidden = this.tree.ofKind('bone').length === 0;
        byId('fit').onclick = () => this.fit();
        byId('view').onchange = ({ target }) => {
            this.look(target.value);
            target.value = '';
        };
    }

    setUpPlayer() {
        const { player } = this;
        byId('player').hidden = player.tracks.length === 0;
        byId('play').onclick = () => player.play(!player.isPlaying);
        byId('back').onclick = () => player.step(-1);
        byId('forward').onclick = () => player.step(1);
        byId('time').oninput = ({ target }) => player.seek(target.value / player.rate());
        byId('speed').onchange = ({ target }) => { player.speed = Number(target.value); };
        const choices = [...player.tracks.map(({ name }, i) => [String(i), name]), ['rest', 'Rest pose']];
        if (player.tracks.length > 1)
            choices.unshift(['all', 'All']);
        else if (player.tracks.length === 1)
            player.choice = '0';
        byId('animation').append(...choices.map(([value, textContent]) => element('option', { value, textContent })));
        byId('animation').onchange = ({ target }) => player.choose(target.value);
        player.onChange = () => this.showTime();
        this.showTime();
    }

    showTime() {
        const { player } = this;
        byId('play').ariaPressed = String(player.isPlaying);
        byId('time').max = player.lastFrame();
        byId('time').value = player.frame();
        byId('frame').textContent = player.duration() > 0 ? `${Math.floor(player.frame() + 1e-3)} / ${player.lastFrame()}` : '';
        byId('seconds').textContent = player.duration() > 0 ? `${player.time.toFixed(2)} s` : '';
    }

    // A click, not the end of a drag.
    setUpPicking() {
        const { canvas } = this.stage;
        let down = null;
        canvas.addEventListener('pointerdown', (event) => { down = event.isPrimary && event.button === 0 ? event : null; });
        canvas.addEventListener('pointerup', (event) => {
            const isClick = down && Math.hypot(event.clientX - down.clientX, event.clientY - down.clientY) < 6;
            down = null;
            if (!isClick)
                return;
            const mesh = this.stage.pick(event.clientX, event.clientY, this.model.shownMeshes());
            this.select(mesh && mesh.userData.entry, mesh && mesh.userData.chunk);
        });
    }

    show(number, isShown) {
        if (!this.model)
            return;
        this.model.show(number, isShown);
        this.model.updateOutline();
        if (this.model.isPoint(number))
            this.updateLabel(number);
        if (number === this.selected)
            this.showDetails();
        this.stage.redraw();
    }

    // `number` is null for nothing.
    select(number, chunk = null) {
        const before = this.selected;
        this.selected = number;
        this.chunk = chunk;
        this.tree.select(number);
        this.showDetails();
        if (!this.model)
            return;
        this.model.select(number, chunk);
        for (const each of [before, number].filter((each) => each !== null && each !== undefined && this.model.isPoint(each))) {
            this.model.showMarker(each, each === number || this.tree.isShown(each));
            this.updateLabel(each);
        }
        this.stage.redraw();
    }

    showDetails() {
        const number = this.selected;
        this.panel.hidden = number === null || number === undefined;
        if (this.panel.hidden)
            return;
        const node = this.data.nodes[number];
        const button = (textContent, onclick) => element('button', { type: 'button', textContent, onclick });
        const actions = element('div', { className: 'actions' },
            node.kind !== 'reference' && button(this.tree.isShown(number) ? 'Hide' : 'Show', () => this.toggle()),
            node.kind === 'entry' && button(this.isAlone ? 'Show all' : 'Show only this', () => this.isolate()),
            button('Fit', () => this.fit()));
        this.panel.replaceChildren(
            element('header', {}, element('h2', { textContent: nameOf(node) }), element('span', { className: 'kind', textContent: kindOfObject(node) })),
            actions, detailsOfNode(node, this.data));
        if (node.kind === 'entry')
            this.showChunks(this.data.meshes[node.mesh].chunks);
    }

    showChunks(chunks) {
        if (chunks.length === 0)
            return;
        const cards = chunks.map((chunk) => chunkDetails(chunk, chunk.number === this.chunk));
        this.panel.append(element('h3', { textContent: counted(chunks.length, 'chunk') }), ...cards);
        const selected = cards.find((card) => card.classList.contains('selected'));
        if (selected)
            this.panel.scrollTop = selected.offsetTop - this.panel.offsetTop - 48;
    }

    toggle() {
        if (this.selected !== null && this.selected !== undefined)
            this.tree.show(this.selected, !this.tree.isShown(this.selected));
    }

    // Shows only the selected entry; then all again.
    isolate() {
        const entries = this.tree.ofKind('entry');
        if (!this.isAlone && !entries.includes(this.selected))
            return;
        this.isAlone = !this.isAlone;
        entries.forEach((number) => this.tree.show(number, !this.isAlone || number === this.selected));
        this.showDetails();
    }

    fit() {
        const hasSelection = this.selected !== null && this.selected !== undefined;
        const shown = this.model.shownMeshes();
        this.stage.fit(hasSelection ? this.model.boxOfNode(this.selected) : this.model.boxOf(shown.length > 0 ? shown : this.model.meshes));
    }

    // The asset's front is at -z here, since its y became -z.
    look(from) {
        const directions = {
            corner: [0.75, 0.38, -1], front: [0, 0, -1], back: [0, 0, 1], right: [1, 0, 0], left: [-1, 0, 0],
            top: [0, 1, 0.001], bottom: [0, -1, 0.001],
        };
        this.stage.fit(this.model.boxOf(this.model.meshes), new THREE.Vector3(...directions[from]));
    }

    updateLabel(number) {
        const isShown = this.model.markers.has(number) && this.model.markers.get(number).visible;
        const isNamed = number === this.selected || this.data.nodes[number].kind === 'attachment';
        if (isShown && isNamed && !this.labels.has(number)) {
            const label = element('button', { type: 'button', textContent: nameOf(this.data.nodes[number]), tabIndex: -1, onclick: () => this.select(number) });
            this.labels.set(number, label);
            byId('labels').append(label);
        } else if (!(isShown && isNamed) && this.labels.has(number)) {
            this.labels.get(number).remove();
            this.labels.delete(number);
        }
        if (this.labels.has(number))
            this.labels.get(number).classList.toggle('selected', number === this.selected);
    }

    placeLabels() {
        for (const [number, label] of this.labels) {
            const place = this.stage.project(new THREE.Vector3().setFromMatrixPosition(this.model.objects[number].matrixWorld));
            label.hidden = !place;
            if (place)
                label.style.transform = `translate(${Math.round(place.x + 8)}px, ${Math.round(place.y - 20)}px)`;
        }
    }

    onKey(event) {
        const isTyping = event.target.matches('select, input[type=range]');
        if (event.ctrlKey || event.altKey || event.metaKey || byId('keys').open || isTyping)
            return;
        if (event.key === ' ' && event.target.matches('button, input, summary'))
            return;
        if (event.key.startsWith('Arrow') && event.target !== this.stage.canvas && event.target !== document.body)
            return;
        const action = this.actionOf(event);
        if (!action)
            return;
        event.preventDefault();
        action();
    }

    actionOf({ key, shiftKey }) {
        const views = ['corner', 'front', 'right', 'back', 'left', 'top', 'bottom'];
        if (/^[1-7]$/.test(key))
            return () => this.look(views[key - 1]);
        const click = (id) => () => byId(id).click();
        const move = (right, up) => () => (shiftKey ? this.stage.pan(right / 8, up / 8) : this.stage.orbit(right / 8, up / 8));
        const actions = {
            ' ': click('play'), ',': click('back'), '.': click('forward'), '?': click('help'),
            t: click('textures'), w: click('wireframe'), n: click('normals'), a: click('points'), b: click('bones'), g: click('grid'), f: click('fit'),
            h: () => this.toggle(), o: () => this.isolate(), escape: () => this.select(null),
            arrowleft: move(-1, 0), arrowright: move(1, 0), arrowup: move(0, 1), arrowdown: move(0, -1),
            '+': () => this.stage.zoom(0.85), '=': () => this.stage.zoom(0.85), '-': () => this.stage.zoom(1 / 0.85),
        };
        return actions[key.toLowerCase()];
    }

    // For tests.
    report() {
        const { model, player, stage, errors } = this;
        return {
            errors,
            ...(model && { ...model.counts(), drawCalls: stage.renderer.info.render.calls, time: player.time, isPlaying: player.isPlaying }),
        };
    }
}

function byId(id) { return document.getElementById(id); }

// Turns a button with two states; returns whether it is on now.
function press(button) {
    const isOn = button.ariaPressed !== 'true';
    button.ariaPressed = String(isOn);
    return isOn;
}

function bytesOf(base64) {
    const text = atob(base64);
    const bytes = new Uint8Array(text.length);
    for (let i = 0; i < text.length; ++i)
        bytes[i] = text.charCodeAt(i);
    return bytes.buffer;
}

function startPage() {
    const page = new Page(JSON.parse(byId('data').textContent));
    window.zlmim = page;
    const end = (message) => {
        if (message)
            byId('message').textContent = message;
        document.documentElement.dataset.ready = message ? 'failed' : 'true';
    };
    try {
        page.stage = new Stage(byId('canvas'));
    } catch (error) {
        end('This browser draws no 3D: it has no WebGL, or WebGL is switched off.');
        return;
    }
    const load = (gltf) => {
        page.start(gltf);
        end('');
    };
    const fail = (error) => end(`The model can't be drawn: ${error.message || error}`);
    new THREE.GLTFLoader().parse(bytesOf(byId('model').textContent), '', (gltf) => {
        try {
            load(gltf);
        } catch (error) {
            fail(error);
            throw error;
        }
    }, fail);
}

startPage();
