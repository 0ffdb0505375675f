'use strict';

// The page as it came shows everything. This keeps it up to date: the sandbox says which report is the newest,
// and when that one is not on the page, the page is fetched again and what is new in it moves over. Nothing that
// is already here is touched, so what is open stays open and what plays goes on.

const reports = document.getElementById('reports');
const link = document.getElementById('link');
const jump = document.getElementById('jump');

let events = null;
let newest = '';
let isRefreshing = false;
let unseen = 0;

function showLink(isLive) {
    link.hidden = false;
    link.className = isLive ? 'is-live' : 'is-away';
    const text = isLive ? 'Live' : 'Waiting for the sandbox';
    if (link.textContent !== text)
        link.textContent = text;
}

function newestHere() {
    return reports.firstElementChild ? reports.firstElementChild.id : '';
}

function showJump(count) {
    unseen = count;
    jump.hidden = count === 0;
    jump.textContent = count === 1 ? '1 new report' : `${count} new reports`;
}

function announce(added) {
    const report = added[0];
    const said = report.querySelector('.message').textContent;
    const kind = report.querySelector('h2').firstChild.textContent;
    const text = added.length > 1 ? `${added.length} new reports` : `New report, ${kind}: ${said.slice(0, 120)}`;
    document.getElementById('news').textContent = text;
    if (window.scrollY > 200)
        showJump(unseen + added.length);
}

function takeOver(fresh) {
    const freshReports = fresh.getElementById('reports');
    // The first report ends the welcome; a sandbox that was started on an empty folder brings it back.
    if (freshReports.childElementCount === 0) {
        location.reload();
        return;
    }
    const hasOlderPage = fresh.getElementById('pages').childElementCount > 0;
    for (const report of [...reports.children]) {
        if (!hasOlderPage && !fresh.getElementById(report.id))
            report.remove();
    }
    const added = [];
    let place = reports.firstElementChild;
    for (const report of freshReports.children) {
        const own = document.getElementById(report.id);
        if (own) {
            place = own.nextElementSibling;
            continue;
        }
        const copy = document.importNode(report, true);
        copy.classList.add('is-new');
        reports.insertBefore(copy, place);
        added.push(copy);
    }
    document.getElementById('welcome')?.remove();
    document.getElementById('count').textContent = fresh.getElementById('count').textContent;
    document.getElementById('pages').replaceChildren(...fresh.getElementById('pages').childNodes);
    if (added.length > 0)
        announce(added);
}

async function refresh() {
    if (isRefreshing)
        return;
    isRefreshing = true;
    try {
        for (let before = null; newest !== newestHere() && newest !== before;) {
            before = newest;
            const answer = await fetch('/', {cache: 'no-store'});
            if (answer.ok)
                takeOver(new DOMParser().parseFromString(await answer.text(), 'text/html'));
        }
    } catch {
        // The sandbox has ended; the next one says again what is the newest.
    } finally {
        isRefreshing = false;
    }
}

// A browser keeps only a few connections to one address. A page that nobody sees gives its own back, and looks
// for what it missed when it is seen again.
function follow() {
    if (document.hidden) {
        events?.close();
        events = null;
        return;
    }
    if (events)
        return;
    events = new EventSource('/sandbox/events');
    events.onopen = () => showLink(true);
    events.onmessage = (event) => {
        newest = event.data;
        refresh();
    };
    events.onerror = () => {
        showLink(false);
        // A browser tries again by itself, but not after an answer that it takes for final.
        if (events?.readyState === EventSource.CLOSED) {
            events = null;
            setTimeout(follow, 2000);
        }
    };
}

if ('follows' in reports.dataset) {
    document.addEventListener('visibilitychange', follow);
    window.addEventListener('pageshow', follow); // also when the browser shows a page that it had kept
    window.addEventListener('scroll', () => unseen > 0 && window.scrollY < 200 && showJump(0), {passive: true});
    follow();
}
