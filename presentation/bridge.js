// Injected into every skin page, apart from the skin's own scripts. A skin asks the
// program for something by writing an action word into its element TB-RunAction; this
// script takes the word, empties the element at once (so the same word can come again)
// and hands it to the program. It watches the whole document, because a render may put
// a new TB-RunAction in place of the old one.
(function () {
    'use strict';
    function watch(program) {
        function take() {
            var element = document.getElementById('TB-RunAction');
            if (!element) return;
            var word = element.innerHTML;
            if (word === '') return;
            element.innerHTML = '';
            program.runAction(word);
        }
        new MutationObserver(take).observe(document, {
            childList: true,
            subtree: true,
            characterData: true
        });
        take();
    }
    new QWebChannel(qt.webChannelTransport, function (channel) {
        watch(channel.objects.tarnby);
    });
})();
