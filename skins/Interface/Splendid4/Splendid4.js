// Splendid4: the skin's side of the bridge with the program, and the little the page
// does on its own (theme, pages, option panel, tidying of values).
//
// The skin asks the program for something by writing an action word into the hidden
// element TB-RunAction; the program empties it and acts. The program calls the
// functions below by name, each guarded, so none of them may be renamed.

'use strict';

var pendingActions = [];

// Hands one action word to the program. A word written while the last one has not been
// taken yet waits its turn, so that two quick clicks do not overwrite each other.
function setRunAction(word) {
  pendingActions.push(word);
  if (pendingActions.length == 1) deliverActions();
}

function deliverActions() {
  var element = document.getElementById('TB-RunAction');
  if (!element || pendingActions.length == 0) return;
  if (element.innerHTML != '') {
    setTimeout(deliverActions, 60);
    return;
  }
  element.innerHTML = pendingActions.shift();
  if (pendingActions.length > 0) setTimeout(deliverActions, 60);
}

function launch(word) {
  setRunAction(word);
  return false;
}

function logError(text) {
  var element = document.getElementById('TB-Error');
  if (!element) return;
  element.innerHTML = String(text).replace(/</g, '&lt;');
  setRunAction('LogError');
}

window.onerror = function (message, source, line) {
  logError('Splendid4: ' + message + ' (line ' + line + ')');
  return true;
};

function guarded(name, work) {
  try {
    work();
  } catch (err) {
    logError('Splendid4 ' + name + ': ' + err.message);
  }
}

// ---- options ---------------------------------------------------------------------

// The value of skin option n: what the program put into its element, else what the
// page was made with, else the default. "N/A" is the word of an option never saved.
function optionValue(n, fallback) {
  var element = document.getElementById(n + 'TB-SkinOption');
  var value = element ? element.textContent.trim() : '';
  if ((value == '' || value == 'N/A') && n == 1) value = document.body.getAttribute('data-theme-option') || '';
  return value == '' || value == 'N/A' ? fallback : value;
}

function applyTheme() {
  var choice = optionValue(1, 'Auto');
  var theme = choice == 'Light' ? 'light' : choice == 'Dark' ? 'dark'
    : document.body.getAttribute('data-daytime') == 'False' ? 'night' : 'sky';
  document.body.classList.remove('theme-sky', 'theme-night', 'theme-light', 'theme-dark');
  document.body.classList.add('theme-' + theme);
}

function showFirst(selector, count) {
  var items = document.querySelectorAll(selector);
  for (var i = 0; i < items.length; i++) items[i].classList.toggle('beyond', i >= count);
}

function applyOptions() {
  applyTheme();
  showFirst('#hour-strip .hour', parseInt(optionValue(2, '12'), 10) || 12);
  showFirst('#day-list .day-row:not(.tonight)', parseInt(optionValue(3, '7'), 10) || 7);
  document.body.classList.toggle('no-map', optionValue(7, 'Show') == 'Hide');
  var selects = document.querySelectorAll('select[data-option]');
  for (var i = 0; i < selects.length; i++) {
    var n = selects[i].getAttribute('data-option');
    selects[i].value = optionValue(n, selects[i].options[0].text);
  }
}

function saveOption(select) {
  var n = select.getAttribute('data-option');
  document.getElementById(n + 'TB-SkinOption').innerHTML = select.value;
  guarded('applyOptions', applyOptions);
  layoutDays();
  setRunAction('SaveSingleSkinSetting(' + n + ')');
}

// ---- pages -----------------------------------------------------------------------

var pages = { Current: 'current', Hour: 'hour', Day: 'day', POP: 'pop' };
var pageActions = { Current: 'ShowCurrent', Hour: 'ShowHourly', Day: 'ShowDaily', POP: 'ShowPop' };

function showPage(name) {
  var body = document.body;
  for (var key in pages) {
    body.classList.toggle('page-' + pages[key], key == name);
    document.getElementById('tab-' + pages[key]).classList.toggle('on', key == name);
  }
  document.getElementById('pages').scrollTop = 0;
}

// A tab shows its page at once and tells the program, which remembers the page and
// calls the display function again.
function goToPage(name) {
  showPage(name);
  setRunAction(pageActions[name]);
}

function shownPage() {
  for (var key in pages) if (document.body.classList.contains('page-' + pages[key])) return key;
  return 'Current';
}

function displayCurrent() { showPage('Current'); }
function displayHour() { showPage('Hour'); }
function displayDay() { showPage('Day'); }
function displayPop() { showPage('POP'); }

function openOverlay(id) { document.getElementById(id).classList.add('open'); }
function hideOverlay(id) { document.getElementById(id).classList.remove('open'); }
function toggleSettings() { document.getElementById('settings-view').classList.toggle('open'); }
function showAlerts() { openOverlay('alerts-view'); }
function showHelp() { openOverlay('settings-view'); }

function toggleDay(row) { row.classList.toggle('open'); }

// ---- window ----------------------------------------------------------------------

function startDrag(event) {
  if (event.button != 0 || event.target.closest('button')) return;
  setRunAction('WindowDrag');
}

function startResize(event) {
  if (event.button == 0) setRunAction('WindowResize');
}

// The map opens the radar in the browser; without a map it offers the maps to choose from.
function openMap() {
  var empty = document.getElementById('map-card').classList.contains('empty');
  setRunAction(empty ? 'ShowMapMenu' : 'LaunchRadarMap');
}

function retrieveWeather() { setRunAction('RetrieveWeather'); }

function displayProgressBar() {
  var bar = document.getElementById('TB-ProgressBar');
  if (!bar.style.width) bar.style.width = '0%';
  bar.style.display = 'block';
}

function refreshObservedTimeStamp(text) {
  document.getElementById('observed-stamp').textContent = 'Updated ' + text;
}

// ---- values ----------------------------------------------------------------------

var shortUnits = { inches: 'in', mm: 'mmHg' };

// "30.01 inches and rising" becomes "30.01 in" with the trend beneath.
function tidyBarometer() {
  var element = document.querySelector('.barometer');
  var match = /^(\S+)\s+(\S+)(?:\s+and\s+(\w+))?/.exec(element.textContent.trim());
  if (!match) return;
  var trend = match[3] || '';
  var arrows = { rising: ' \u2197', falling: ' \u2198', steady: ' \u2192' };
  element.setAttribute('data-unit', shortUnits[match[2]] || match[2]);
  element.textContent = match[1] + ' ' + element.getAttribute('data-unit');
  element.parentNode.querySelector('.barometer-trend').textContent =
    trend ? trend.charAt(0).toUpperCase() + trend.slice(1) + (arrows[trend] || '') : '';
}

// Lines whose values are all missing are left out rather than showing "N/A"; a missing
// word beside a value is just left out.
function hideMissing() {
  var blanks = document.querySelectorAll('.na-blank');
  for (var k = 0; k < blanks.length; k++) if (blanks[k].textContent == 'N/A') blanks[k].textContent = '';
  var groups = document.querySelectorAll('.na-hide');
  for (var i = 0; i < groups.length; i++) {
    var values = groups[i].querySelectorAll('[data-rt]');
    var missing = 0;
    for (var j = 0; j < values.length; j++) if (/N\/A/.test(values[j].textContent)) missing++;
    groups[i].classList.toggle('na', missing == values.length);
  }
}

function layoutMap() {
  var image = document.getElementById('map-image');
  var source = image.getAttribute('src') || '';
  var empty = source == '' || /Blank\.gif(\?|$)/i.test(source);
  document.getElementById('map-card').classList.toggle('empty', empty);
  if (skinStation.international) document.querySelector('.map-title').textContent = 'Map';
}

function layoutLinks() {
  var hasPages = skinStation.group == 'WeatherBug' || skinStation.group == 'WUnderground';
  var links = document.querySelectorAll('.link-forecast, .link-history');
  for (var i = 0; i < links.length; i++) links[i].classList.toggle('hidden', !hasPages);
}

// Each day's bar spans its low to its high on the scale of the whole list.
function layoutDays() {
  var rows = document.querySelectorAll('#day-list .day-row');
  var lowest = Infinity, highest = -Infinity;
  function number(row, key) { return parseFloat(row.getAttribute('data-' + key)); }
  for (var i = 0; i < rows.length; i++) {
    var hi = number(rows[i], 'hi'), lo = number(rows[i], 'lo');
    if (!isNaN(lo)) lowest = Math.min(lowest, lo);
    if (!isNaN(hi)) highest = Math.max(highest, hi);
    if (!isNaN(lo) && isNaN(hi)) highest = Math.max(highest, lo);
  }
  var span = highest - lowest || 1;
  for (var k = 0; k < rows.length; k++) {
    var low = number(rows[k], 'lo'), high = number(rows[k], 'hi');
    if (isNaN(low)) low = isNaN(high) ? lowest : high;
    if (isNaN(high)) high = low;
    var fill = rows[k].querySelector('.fill');
    fill.style.left = ((low - lowest) / span * 100) + '%';
    fill.style.right = ((highest - high) / span * 100) + '%';
  }
  var first = rows.length ? rows[0] : null;
  if (first && !first.classList.contains('tonight')) first.querySelector('.d-name strong').textContent = 'Today';
}

function watchNews() {
  var link = document.getElementById('TB-NewsStoryLink');
  var mark = function () { link.parentNode.classList.toggle('empty', link.innerHTML.trim() == ''); };
  mark();
  new MutationObserver(mark).observe(link, { childList: true, characterData: true, subtree: true });
}

var loaded = false;

// Called by the program after each load, and by the page itself once it is parsed.
function runLoadProcedures() {
  if (!document.getElementById('pages')) return; // the waiting page
  guarded('runLoadProcedures', function () {
    applyOptions();
    if (!loaded) {
      tidyBarometer();
      layoutMap();
      layoutLinks();
      watchNews();
      showPage(shownPage());
      loaded = true;
    }
    hideMissing();
    layoutDays();
  });
}

// ---- live values ------------------------------------------------------------------

// Places of the values in the argument list of refreshRealtimeData: each reading is
// given in base units and then in the user's units ("N/A" when those are the base).
var live = {
  temp: 2, high: 4, low: 6, feels: 8, dew: 14, humidity: 20,
  rain: 24, 'rain-rate': 26, 'wind-direction': 32, wind: 34, gust: 39, pressure: 41
};
var temperatures = { temp: 1, high: 1, low: 1, feels: 1, dew: 1 };
var firstUnitArgument = 49;
var compassDegrees = {
  N: '360', NNE: '22.5', NE: '45', ENE: '67.5', E: '90', ESE: '112.5', SE: '135', SSE: '157.5',
  S: '180', SSW: '202.5', SW: '225', WSW: '247.5', W: '270', WNW: '292.5', NW: '315', NNW: '337.5'
};

function usable(value) { return value !== undefined && value !== '' && value != 'N/A'; }

function liveValue(args, key) {
  var at = live[key];
  var base = args[at];
  if (key == 'humidity') return base;
  if (key == 'wind-direction') {
    var inDegrees = args[args.length - 1] == 'true';
    return inDegrees && compassDegrees[base] ? compassDegrees[base] + '\u00b0' : base;
  }
  var twin = args[at + 1];
  if (temperatures[key]) {
    var value = args[firstUnitArgument] == 'C' && usable(twin) ? twin : base;
    return usable(value) ? String(Math.round(parseFloat(value))) : value;
  }
  return usable(twin) ? twin : base;
}

// Puts a new number in place of the old one, keeping the unit and dress around it.
function replaceNumber(element, value) {
  var text = element.textContent;
  var next = /-?\d/.test(text) ? text.replace(/-?\d[\d.,]*/, value)
    : /^-?\d/.test(value) && element.getAttribute('data-unit') ? value + ' ' + element.getAttribute('data-unit')
    : value;
  if (next == text) return;
  element.textContent = next;
  element.classList.remove('flash');
  void element.offsetWidth;
  element.classList.add('flash');
}

function refreshRealtimeData() {
  var args = Array.prototype.slice.call(arguments);
  guarded('refreshRealtimeData', function () {
    var elements = document.querySelectorAll('[data-rt]');
    for (var i = 0; i < elements.length; i++) {
      var key = elements[i].getAttribute('data-rt');
      if (!(key in live)) continue;
      var value = liveValue(args, key);
      if (!usable(value)) continue;
      replaceNumber(elements[i], value);
    }
    hideMissing();
  });
}

function refreshRealtimeCondition(description, icon) {
  guarded('refreshRealtimeCondition', function () {
    if (usable(description)) document.getElementById('now-condition').textContent = description;
    if (usable(icon)) document.getElementById('now-icon').src = icon;
  });
}
