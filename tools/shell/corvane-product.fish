# Completion of corvane-product for fish.
complete -c corvane-product -l check -d 'Print only whether the products are good'
complete -c corvane-product -l json -d 'Print findings as JSON'
complete -c corvane-product -l strict -d 'Refuse products of which a value would be left out'
complete -c corvane-product -s h -l help -d 'Print a summary of the options'
complete -c corvane-product -l version -d 'Print the version'
