// TextOnly: the skin's side of the bridge with the program. After the first load the
// program puts each new page into the element "Body" instead of loading it, so the page
// keeps this script; everything here looks elements up afresh each time.

'use strict';

// Hands one action word to the program through TB-RunAction. Each link sends one word,
// so there is no queue to keep.
function setRunAction(word) {
  var element = document.getElementById('TB-RunAction');
  if (element) element.innerHTML = word;
}

function act(word) {
  setRunAction(word);
  return false;
}

window.onerror = function (message, source, line) {
  var element = document.getElementById('TB-Error');
  if (element) {
    element.textContent = 'TextOnly: ' + message + ' (line ' + line + ')';
    setRunAction('LogError');
  }
  return true;
};

var sections = { Current: 'current', Hour: 'hourly', Day: 'daily', POP: 'precipitation' };
var sectionActions = { Current: 'ShowCurrent', Hour: 'ShowHourly', Day: 'ShowDaily', POP: 'ShowPop' };

// Every section is always on the page. The program's calls only scroll; moving the
// focus is kept for the reader's own choice, so that a refresh never interrupts speech.
function scrollToSection(id, focus) {
  var section = document.getElementById(id);
  if (!section) return;
  section.scrollIntoView();
  var heading = section.querySelector('h2');
  if (focus && heading) heading.focus();
}

function goTo(page) {
  scrollToSection(sections[page], true);
  setRunAction(sectionActions[page]);
  return false;
}

function displayCurrent() { scrollToSection('current', false); }
function displayHour() { scrollToSection('hourly', false); }
function displayDay() { scrollToSection('daily', false); }
function displayPop() { scrollToSection('precipitation', false); }
function showAlerts() { scrollToSection('alerts', true); }
function showHelp() { scrollToSection('current', true); }

function displayProgressBar() {
  var bar = document.getElementById('TB-ProgressBar');
  if (bar) bar.hidden = false;
  var status = document.getElementById('status');
  if (status) status.textContent = 'Updating the weather.';
}

function refreshObservedTimeStamp(text) {
  var stamp = document.getElementById('observed-stamp');
  if (stamp) stamp.textContent = text;
}

// Called by the program after each load: the update, if one was announced, is done.
function runLoadProcedures() {
  var status = document.getElementById('status');
  if (status) status.textContent = '';
}
