# The floors of the core from the ground up. A floor includes only those before it.
set(kestrum_floors text platform forms config cat position signal ui logging app)
