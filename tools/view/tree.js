// The list of entries, attachment points and bones, with a box each to show and hide it.
class Tree {
    constructor({ nodes, meshes }, host, { onSelect, onShow }) {
        Object.assign(this, { nodes, meshes, host, onSelect, onShow });
        this.children = nodes.map(() => []);
        nodes.forEach((node, number) => {
            if (node.parent !== undefined && node.kind !== 'mesh')
                this.children[node.parent].push(number);
        });
        this.rows = new Map();
        // Rows of folded groups are made when they are opened; until then their state is here.
        this.shown = new Map(nodes.map((node, number) => [number, node.kind === 'entry']));
        const list = element('ul', { className: 'tree' });
        nodes.forEach((node, number) => {
            if (node.parent === undefined && node.kind === undefined)
                this.addHanging(list, number, 0, '');
        });
        host.replaceChildren(list);
    }

    // The entries and references that hang on a node or, through its points, on an entry.
    addHanging(list, number, depth, at) {
        for (const child of this.children[number]) {
            const { kind, name } = this.nodes[child];
            if (kind === 'entry' || kind === 'reference')
                list.append(this.makePart(child, depth, at));
            else if (kind === 'attachment')
                this.addHanging(list, child, depth, name);
        }
    }

    makePart(number, depth, at) {
        const node = this.nodes[number];
        const below = element('ul', { className: 'tree' });
        if (node.kind === 'entry') {
            this.addGroup(below, this.pointsOf(number), depth + 1, 'attachment points', 'attachment point');
            this.addGroup(below, this.bonesOf(number), depth + 1, 'bones', 'bone');
        }
        this.addHanging(below, number, depth + 1, '');
        const note = node.kind === 'entry' ? counted(this.meshes[node.mesh].polygons, 'triangle') : node.asset || '';
        const row = this.makeRow(number, depth, note, at && `at ${at}`);
        const hasParts = below.querySelector(':scope > li:not(.folder)') !== null;
        return foldable(row, below, hasParts);
    }

    pointsOf(entry) { return this.children[entry].filter((child) => this.nodes[child].kind === 'attachment').map((child) => [child, 0]); }

    // Depth-first, with the depth of each.
    bonesOf(entry) {
        const bones = [];
        const waiting = [[entry, -1]];
        while (waiting.length > 0) {
            const [at, depth] = waiting.pop();
            if (depth >= 0)
                bones.push([at, depth]);
            const children = this.children[at].filter((child) => this.nodes[child].kind === 'bone');
            waiting.push(...children.reverse().map((child) => [child, depth + 1]));
        }
        return bones;
    }

    addGroup(list, members, depth, title, one) {
        if (members.length === 0)
            return;
        const numbers = members.map(([number]) => number);
        const box = element('input', { type: 'checkbox', ariaLabel: `Show all ${title}`, onchange: () => this.showAll(numbers, box.checked) });
        const row = element('div', { className: 'row folder-row' }, foldButton(), box, element('span', { className: 'name', textContent: counted(members.length, one) }));
        row.style.setProperty('--depth', depth);
        const below = element('ul', { className: 'tree' });
        const fill = () => {
            if (below.childElementCount === 0)
                below.append(...members.map(([number, deep]) => element('li', {}, this.makeRow(number, depth + 1 + Math.min(deep, 8), '', ''))));
        };
        const item = foldable(row, below, false, fill);
        item.classList.add('folder');
        numbers.forEach((number) => this.rows.set(number, { open: () => { fill(); item.unfold(); }, box: null, row: null, folder: box }));
        list.append(item);
    }

    makeRow(number, depth, note, at) {
        const node = this.nodes[number];
        const hasBox = node.kind !== 'reference';
        const box = hasBox && element('input', {
            type: 'checkbox', checked: this.shown.get(number), ariaLabel: `Show ${nameOf(node)}`, onchange: () => this.show(number, box.checked) });
        const name = element('button', { type: 'button', className: 'name', title: nameOf(node), onclick: () => this.onSelect(number) },
            nameOf(node), at && element('span', { className: 'note', textContent: at }));
        const row = element('div', { className: 'row' }, node.kind === 'entry' || node.kind === 'reference' ? foldButton() : element('span', { className: 'fold leaf' }),
            box, name, element('span', { className: 'note', textContent: note }));
        row.dataset.node = number;
        row.style.setProperty('--depth', depth);
        this.rows.set(number, { ...this.rows.get(number), box, row });
        return row;
    }

    isShown(number) { return this.shown.get(number); }

    show(number, isShown) {
        this.shown.set(number, isShown);
        const row = this.rows.get(number);
        if (row && row.box)
            row.box.checked = isShown;
        this.onShow(number, isShown);
    }

    showAll(numbers, isShown) {
        const members = new Set(numbers);
        numbers.forEach((number) => this.show(number, isShown));
        this.rows.forEach(({ folder }, number) => {
            if (folder && members.has(number))
                folder.checked = isShown;
        });
    }

    ofKind(kind) { return [...this.nodes.keys()].filter((number) => this.nodes[number].kind === kind); }

    // Marks the row of a node, and brings it into view; `number` is null for nothing.
    select(number) {
        this.host.querySelectorAll('.row.selected').forEach((row) => row.classList.remove('selected'));
        const found = this.rows.get(number);
        if (!found)
            return;
        if (found.open)
            found.open();
        const { row } = this.rows.get(number);
        for (let item = row.closest('li').parentElement.closest('li'); item; item = item.parentElement.closest('li'))
            item.unfold();
        row.classList.add('selected');
        row.scrollIntoView({ block: 'nearest' });
    }
}

function nameOf(node) {
    return node.name || 'without a name';
}

function foldButton() {
    return element('button', { type: 'button', className: 'fold', ariaLabel: 'Open or close' });
}

// An item with what its row's button opens and closes. `fill` is called before it is opened.
function foldable(row, below, isOpen, fill = () => {}) {
    const button = row.querySelector('.fold');
    const item = element('li', {}, row, below);
    const set = (isUnfolded) => {
        if (isUnfolded)
            fill();
        below.hidden = !isUnfolded;
        button.ariaExpanded = String(isUnfolded);
    };
    button.onclick = () => set(below.hidden);
    item.unfold = () => set(true);
    set(isOpen);
    if (below.childElementCount === 0 && !row.classList.contains('folder-row'))
        button.classList.add('leaf');
    return item;
}
