#!/usr/bin/env python3
"""Adds messages to the five translation files in one step.

Usage: scripts/add-translations.py KEYS.json
KEYS.json maps each message id to its texts in the order en, tr, de, es, fr.
Ids already present are left alone.
"""
import html, json, os, sys
here = os.path.dirname(os.path.abspath(__file__))
langs=["en","tr","de","es","fr"]
keys=json.load(open(sys.argv[1]))
for i,l in enumerate(langs):
    p=os.path.join(here, '..', 'translations', f'fenrow_{l}.ts')
    s=open(p,encoding='utf-8').read()
    add=[]
    for k,v in keys.items():
        if f'<message id="{html.escape(k,quote=True)}">' in s: continue
        add.append(f'    <message id="{html.escape(k,quote=True)}">\n        <source>{html.escape(v[0],quote=False)}</source>\n        <translation>{html.escape(v[i],quote=False)}</translation>\n    </message>')
    s=s.replace('</context>\n</TS>', '\n'.join(add)+'\n</context>\n</TS>') if add else s
    open(p,'w',encoding='utf-8').write(s)
